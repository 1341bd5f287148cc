// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The queue of the interface thread: the one way for other threads to reach it. The command line
// and tests run PlainMainQueue; a window puts its event loop behind the same interface.

#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>

namespace quirn::platform {

class MainQueue {
 public:
  virtual ~MainQueue() = default;

  // Runs `task` later on the interface thread, in order of posting. May be called from any thread.
  virtual void post(std::function<void()> task) = 0;
};

class PlainMainQueue final : public MainQueue {
 public:
  void post(std::function<void()> task) override;

  // Runs what is posted until `isDone`, on the calling thread, which becomes the interface thread.
  // `onTick` is called once every `tick` meanwhile.
  void runUntil(const std::function<bool()>& isDone, std::chrono::milliseconds tick,
                const std::function<void()>& onTick);

 private:
  std::function<void()> takeUntil(std::chrono::steady_clock::time_point deadline);

  std::mutex mutex_;
  std::condition_variable posted_;
  std::deque<std::function<void()>> tasks_;  // guarded by mutex_
};

}  // namespace quirn::platform
