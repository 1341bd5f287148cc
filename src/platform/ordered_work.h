// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Work on all processors whose results are taken by the thread that hands it out, in the order in which it did.

#pragma once

#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <utility>

#include "platform/task_pool.h"

namespace quirn::platform {

// Not for tasks of the shared pool themselves, which don't wait for one another.
class OrderedWork {
 public:
  // Runs `job` on a thread of the shared pool; `take` gets what it returns, on this thread, in a later call of add() or
  // in finish(). The job owns what it works on. What it throws comes out where its result would.
  template <class Job, class Take>
  void add(Job job, Take take) {
    using Result = std::invoke_result_t<Job&>;
    const auto task = std::make_shared<std::packaged_task<Result()>>(std::move(job));
    const auto result = std::make_shared<std::future<Result>>(task->get_future());
    TaskPool::shared().submit([task] { (*task)(); });
    pending_.push_back([result, take = std::move(take)] { take(result->get()); });
    while (pending_.size() > static_cast<std::size_t>(activeProcessorCount()) + 1) takeFirst();
  }

  void finish() {
    while (!pending_.empty()) takeFirst();
  }

 private:
  void takeFirst() {
    const std::function<void()> take = std::move(pending_.front());
    pending_.pop_front();
    take();
  }

  std::deque<std::function<void()>> pending_;
};

}  // namespace quirn::platform
