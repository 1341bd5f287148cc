// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The threads that do the work: one pool for the whole process, as many threads as processors.

#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace quirn::platform {

// The processors that this process may use now, at least 1.
int activeProcessorCount();

class TaskPool {
 public:
  static TaskPool& shared();

  TaskPool() = default;
  TaskPool(const TaskPool&) = delete;
  TaskPool& operator=(const TaskPool&) = delete;
  // Waits for all tasks.
  ~TaskPool();

  // Runs `task` on a thread of the pool, in order of submission. The task lets no exception out, and doesn't wait for
  // another task of the pool, which may not have a thread yet. May be called from any thread.
  void submit(std::function<void()> task);

 private:
  void addThread();  // mutex_ is held
  void serve();

  const std::size_t mostThreads_ = static_cast<std::size_t>(activeProcessorCount());
  std::mutex mutex_;
  std::condition_variable changed_;
  // The rest is guarded by mutex_.
  std::deque<std::function<void()>> tasks_;
  std::vector<std::thread> threads_;
  std::size_t idleThreads_ = 0;
  bool isClosing_ = false;
};

}  // namespace quirn::platform
