// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/main_queue.h"

#include <algorithm>

namespace quirn::platform {

void PlainMainQueue::post(std::function<void()> task) {
  // Notified under the lock: the interface thread may drop the queue as soon as it has the task.
  const std::scoped_lock guard(mutex_);
  tasks_.push_back(std::move(task));
  posted_.notify_one();
}

void PlainMainQueue::postAfter(std::chrono::milliseconds delay, std::function<void()> task) {
  const std::scoped_lock guard(mutex_);
  delayedTasks_.emplace(now_() + delay, std::move(task));
  posted_.notify_one();
}

// Under mutex_.
void PlainMainQueue::moveDueTasks() {
  const auto end = delayedTasks_.upper_bound(now_());
  for (auto due = delayedTasks_.begin(); due != end; ++due) tasks_.push_back(std::move(due->second));
  delayedTasks_.erase(delayedTasks_.begin(), end);
}

// Nothing once `deadline` has passed without a task.
std::function<void()> PlainMainQueue::takeUntil(Clock::time_point deadline) {
  std::unique_lock guard(mutex_);
  for (;;) {
    moveDueTasks();
    if (!tasks_.empty()) break;
    if (now_() >= deadline) return nullptr;
    const bool hasDelayed = !delayedTasks_.empty();
    const auto next = hasDelayed ? std::min(deadline, delayedTasks_.begin()->first) : deadline;
    posted_.wait_for(guard, next - now_());
  }
  auto task = std::move(tasks_.front());
  tasks_.pop_front();
  return task;
}

void PlainMainQueue::runDue() {
  while (const auto task = takeUntil(Clock::time_point::min())) task();
}

void PlainMainQueue::runUntil(const std::function<bool()>& isDone, std::chrono::milliseconds tick,
                              const std::function<void()>& onTick) {
  auto nextTick = now_() + tick;
  while (!isDone()) {
    if (const auto task = takeUntil(nextTick)) {
      task();
      continue;
    }
    onTick();
    nextTick = now_() + tick;
  }
}

}  // namespace quirn::platform
