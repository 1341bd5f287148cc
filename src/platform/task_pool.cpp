// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/task_pool.h"

#include <sched.h>
#include <tbb/global_control.h>
#include <tbb/task_arena.h>

#include <algorithm>

namespace quirn::platform {
namespace {

// An arena without places for outside threads, so that every processor serves tasks. By itself the
// library counts the thread that asks as one of its own and keeps one fewer.
struct Arena {
  int threads = activeProcessorCount();
  tbb::global_control limit{tbb::global_control::max_allowed_parallelism,
                            static_cast<std::size_t>(threads) + 1};
  tbb::task_arena arena{threads, 0};
};

Arena& sharedArena() {
  static Arena arena;
  return arena;
}

}  // namespace

int activeProcessorCount() {
  cpu_set_t processors;
  CPU_ZERO(&processors);
  if (::sched_getaffinity(0, sizeof processors, &processors) != 0) return 1;
  return std::max(1, CPU_COUNT(&processors));
}

TaskPool& TaskPool::shared() {
  static TaskPool pool;
  return pool;
}

void TaskPool::submit(std::function<void()> task) {
  sharedArena().arena.enqueue(std::move(task));
}

}  // namespace quirn::platform
