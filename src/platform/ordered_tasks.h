// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Work that is done side by side on the task pool and taken in the order in which it was begun.
//
//   OrderedTasks<Bytes> pieces;
//   pieces.begin([…] { return deflatedPiece(…); });
//   …
//   while (!pieces.isEmpty()) sink(pieces.next());
//
// How much is in work at once is the owner's to limit. Used by one thread at a time, which may be one of the pool's:
// instead of waiting for a result it runs what no other thread has taken yet.

#pragma once

#include <atomic>
#include <chrono>
#include <deque>
#include <functional>
#include <future>
#include <memory>
#include <utility>

#include "platform/task_pool.h"

namespace quirn::platform {

template <class Result>
class OrderedTasks {
 public:
  OrderedTasks() = default;
  OrderedTasks(const OrderedTasks&) = delete;
  OrderedTasks& operator=(const OrderedTasks&) = delete;
  // Tasks that nobody has begun on are dropped, the others waited for.
  ~OrderedTasks() {
    for (const auto& task : tasks_)
      if (!task->claim()) task->result.wait();
  }

  void begin(std::function<Result()> work) {
    const auto task = std::make_shared<Task>(std::move(work));
    tasks_.push_back(task);
    TaskPool::shared().submit([task] { task->runOnce(); });
  }

  bool isEmpty() const { return tasks_.empty(); }
  std::size_t size() const { return tasks_.size(); }

  // Takes the oldest result, or throws what its task has thrown. There must be one.
  Result next() {
    const std::shared_ptr<Task> task = std::move(tasks_.front());
    tasks_.pop_front();
    task->runOnce();
    for (auto other = tasks_.begin(); !task->isDone() && other != tasks_.end(); ++other) (*other)->runOnce();
    return task->result.get();
  }

 private:
  struct Task {
    explicit Task(std::function<Result()> function) : work(std::move(function)), result(work.get_future()) {}

    bool claim() { return !isClaimed.exchange(true); }
    void runOnce() {
      if (claim()) work();
    }
    bool isDone() const { return result.wait_for(std::chrono::seconds::zero()) == std::future_status::ready; }

    std::atomic<bool> isClaimed = false;
    std::packaged_task<Result()> work;
    std::future<Result> result;
  };

  std::deque<std::shared_ptr<Task>> tasks_;
};

}  // namespace quirn::platform
