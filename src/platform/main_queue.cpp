// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/main_queue.h"

namespace quirn::platform {

void PlainMainQueue::post(std::function<void()> task) {
  {
    const std::scoped_lock guard(mutex_);
    tasks_.push_back(std::move(task));
  }
  posted_.notify_one();
}

std::function<void()> PlainMainQueue::takeUntil(std::chrono::steady_clock::time_point deadline) {
  std::unique_lock guard(mutex_);
  if (!posted_.wait_until(guard, deadline, [this] { return !tasks_.empty(); })) return nullptr;
  auto task = std::move(tasks_.front());
  tasks_.pop_front();
  return task;
}

void PlainMainQueue::runUntil(const std::function<bool()>& isDone, std::chrono::milliseconds tick,
                              const std::function<void()>& onTick) {
  auto nextTick = std::chrono::steady_clock::now() + tick;
  while (!isDone()) {
    if (const auto task = takeUntil(nextTick)) {
      task();
      continue;
    }
    onTick();
    nextTick = std::chrono::steady_clock::now() + tick;
  }
}

}  // namespace quirn::platform
