// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The queue of the interface thread: the one way for other threads to reach it. The command line
// and tests run PlainMainQueue; a window puts its event loop behind the same interface.

#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <utility>

namespace quirn::platform {

class MainQueue {
 public:
  virtual ~MainQueue() = default;

  // Runs `task` later on the interface thread, in order of posting. May be called from any thread.
  virtual void post(std::function<void()> task) = 0;

  // The same, once `delay` has passed.
  virtual void postAfter(std::chrono::milliseconds delay, std::function<void()> task) = 0;
};

class PlainMainQueue final : public MainQueue {
 public:
  using Clock = std::chrono::steady_clock;

  // `now` is the time by which delays pass; tests set their own.
  explicit PlainMainQueue(std::function<Clock::time_point()> now = &Clock::now) : now_(std::move(now)) {}

  void post(std::function<void()> task) override;
  void postAfter(std::chrono::milliseconds delay, std::function<void()> task) override;

  // Runs what is posted until `isDone`, on the calling thread, which becomes the interface thread.
  // `onTick` is called once every `tick` meanwhile.
  void runUntil(const std::function<bool()>& isDone, std::chrono::milliseconds tick,
                const std::function<void()>& onTick);

  // Runs what is posted and due by now, and what that posts in turn.
  void runDue();

 private:
  std::function<void()> takeUntil(Clock::time_point deadline);
  void moveDueTasks();

  std::function<Clock::time_point()> now_;
  std::mutex mutex_;
  std::condition_variable posted_;
  // Guarded by mutex_.
  std::deque<std::function<void()>> tasks_;
  std::multimap<Clock::time_point, std::function<void()>> delayedTasks_;  // by when they are due
};

}  // namespace quirn::platform
