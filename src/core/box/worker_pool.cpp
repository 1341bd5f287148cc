// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/box/worker_pool.h"

#include <chrono>
#include <system_error>

#include "core/box/protocol.h"
#include "core/operation_error.h"
#include "platform/task_pool.h"

namespace quirn::box {
namespace {

using platform::MessageSocket;

// A heavy library on a busy machine and a cold disk.
constexpr std::chrono::seconds longestStart{60};

bool isReady(const platform::WorkerProcess& worker) {
  if (!worker.messages().waitForMessage(longestStart)) return false;
  const auto message = worker.messages().receive(MessageSocket::Descriptors::refused);
  return message && MessageReader(message->bytes).choice<Ask>() == Ask::ready;
}

[[noreturn]] void fail(const std::string& why) {
  throw OperationError::engineFailed("the start of the program that reads files", why);
}

}  // namespace

WorkerPool::~WorkerPool() {
  {
    const std::scoped_lock guard(mutex_);
    isEnding_ = true;
  }
  asked_.notify_one();
  if (spawner_.joinable()) spawner_.join();
}

WorkerPool::Worker WorkerPool::takeWarm(const std::string& kind) {
  const std::scoped_lock guard(mutex_);
  std::vector<Worker>& waiting = warm_[kind];
  while (!waiting.empty()) {
    Worker worker = std::move(waiting.back());
    waiting.pop_back();
    if (!worker->messages().waitForMessage(std::chrono::milliseconds(0))) return worker;
  }
  return nullptr;
}

void WorkerPool::prepare(const std::string& kind, std::ptrdiff_t count) {
  const std::scoped_lock guard(mutex_);
  std::vector<std::future<Worker>>& begun = begun_[kind];
  count -= std::ssize(warm_[kind]) + std::ssize(begun);
  for (; count > 0; --count) begun.push_back(beginStart(kind));
}

std::future<WorkerPool::Worker> WorkerPool::beginStart(const std::string& kind) {
  spawns_.emplace_back([this, kind] { return std::make_unique<platform::WorkerProcess>(program_, kind); });
  if (!spawner_.joinable()) spawner_ = std::thread([this] { spawnInTurn(); });
  asked_.notify_one();
  return spawns_.back().get_future();
}

std::future<WorkerPool::Worker> WorkerPool::takeBegun(const std::string& kind) {
  const std::scoped_lock guard(mutex_);
  std::vector<std::future<Worker>>& begun = begun_[kind];
  if (begun.empty()) return beginStart(kind);
  std::future<Worker> first = std::move(begun.front());
  begun.erase(begun.begin());
  return first;
}

WorkerPool::Worker WorkerPool::start(const std::string& kind) {
  try {
    Worker worker = takeBegun(kind).get();
    if (!isReady(*worker)) fail("The worker ended before it was ready.");
    return worker;
  } catch (const std::system_error& error) {
    fail(error.what());
  } catch (const DamagedMessage& error) {
    fail(error.what());
  }
}

void WorkerPool::keep(const std::string& kind, Worker worker) {
  const std::scoped_lock guard(mutex_);
  std::vector<Worker>& waiting = warm_[kind];
  if (std::ssize(waiting) < platform::activeProcessorCount()) waiting.push_back(std::move(worker));
}

void WorkerPool::spawnInTurn() {
  std::unique_lock guard(mutex_);
  for (;;) {
    asked_.wait(guard, [this] { return isEnding_ || !spawns_.empty(); });
    if (spawns_.empty()) return;
    std::packaged_task<Worker()> spawn = std::move(spawns_.front());
    spawns_.pop_front();
    guard.unlock();
    spawn();
    guard.lock();
  }
}

}  // namespace quirn::box
