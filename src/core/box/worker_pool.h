// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The workers that wait for work. One that has served a file is kept for the next, since starting it and loading its
// library cost more than most files do.

#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <filesystem>
#include <future>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "platform/worker_process.h"

namespace quirn::box {

class WorkerPool {
 public:
  using Worker = std::unique_ptr<platform::WorkerProcess>;

  // `program` is what is started as a worker.
  explicit WorkerPool(std::filesystem::path program) : program_(std::move(program)) {}
  // Kills all that wait.
  ~WorkerPool();
  WorkerPool(const WorkerPool&) = delete;
  WorkerPool& operator=(const WorkerPool&) = delete;

  // One that waits, or null. Those that died while they waited, or spoke unasked, are dropped.
  Worker takeWarm(const std::string& kind);

  // Begins to start so many, which start() then finds on their way.
  void prepare(const std::string& kind, std::ptrdiff_t count);

  // A new one, locked and ready. Throws engineFailed.
  Worker start(const std::string& kind);

  // Takes back one whose request has ended well; as many as there are processors are kept.
  void keep(const std::string& kind, Worker worker);

 private:
  std::future<Worker> beginStart(const std::string& kind);  // mutex_ is held
  std::future<Worker> takeBegun(const std::string& kind);
  void spawnInTurn();

  std::filesystem::path program_;
  std::mutex mutex_;
  std::condition_variable asked_;
  // All guarded by mutex_.
  std::map<std::string, std::vector<Worker>> warm_;
  std::map<std::string, std::vector<std::future<Worker>>> begun_;  // that nobody has asked for yet
  std::deque<std::packaged_task<Worker()>> spawns_;
  bool isEnding_ = false;
  // Starts every worker: the kernel kills a worker when the thread that started it ends.
  std::thread spawner_;
};

}  // namespace quirn::box
