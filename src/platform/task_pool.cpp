// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/task_pool.h"

#include <sched.h>

#include <algorithm>
#include <system_error>
#include <utility>

namespace quirn::platform {

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

TaskPool::~TaskPool() {
  {
    const std::scoped_lock guard(mutex_);
    isClosing_ = true;
  }
  changed_.notify_all();
  for (std::thread& thread : threads_) thread.join();
}

void TaskPool::submit(std::function<void()> task) {
  {
    const std::scoped_lock guard(mutex_);
    tasks_.push_back(std::move(task));
    if (tasks_.size() > idleThreads_) addThread();
  }
  changed_.notify_one();
}

void TaskPool::addThread() {
  if (threads_.size() >= mostThreads_) return;
  try {
    threads_.emplace_back([this] { serve(); });
  } catch (const std::system_error&) {
    // A machine that gives no more threads makes the work slower, not impossible.
    if (threads_.empty()) throw;
  }
}

void TaskPool::serve() {
  std::unique_lock guard(mutex_);
  for (;;) {
    ++idleThreads_;
    changed_.wait(guard, [this] { return !tasks_.empty() || isClosing_; });
    --idleThreads_;
    if (tasks_.empty()) return;
    const auto task = std::exchange(tasks_.front(), nullptr);
    tasks_.pop_front();
    guard.unlock();
    task();
    guard.lock();
  }
}

}  // namespace quirn::platform
