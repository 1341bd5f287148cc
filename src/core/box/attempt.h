// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// One request served by one worker: what it asks is answered, and how it behaves is watched.

#pragma once

#include <chrono>
#include <cstdint>
#include <exception>
#include <optional>
#include <span>

#include "core/box/grant.h"
#include "platform/worker_process.h"

namespace quirn::box {

struct Request {
  const OperationType& type;
  std::span<const InputFile> inputs;
  const OperationConfig* config;  // null for the default settings
  OperationContext& context;
  enum class Wanted { run, configuration } wanted = Wanted::run;
};

// A worker that is of no use any more.
class WorkerLost final : public std::exception {
 public:
  enum class How { died, misbehaved, silent, slowToStop };
  explicit WorkerLost(How how) : how_(how) {}
  How how() const { return how_; }
  const char* what() const noexcept override { return "worker lost"; }

 private:
  How how_;
};

class Attempt {
 public:
  // All outlive it. `serial` tells this request from all others of the worker.
  Attempt(platform::WorkerProcess& worker, const Request& request, const BoxLimits& limits, std::uint32_t serial);

  // Until the request has ended. Throws WorkerLost, OperationError where a budget is overdrawn, and what comes of a
  // fault of ours; the worker is to be killed then.
  void serve();

  // Once it has ended.
  OperationResult result() { return grant_.result(); }

  const std::vector<Setting>& settings() const { return grant_.settings(); }

  bool hasPublished() const { return grant_.hasPublished(); }

 private:
  using Clock = std::chrono::steady_clock;  // stands still while the machine sleeps

  void begin();
  std::optional<InputHandle> openAhead() const;
  void send(const MessageWriter& message, int descriptor = -1);
  void takeNext();
  void limitWorker();
  void watch();

  platform::WorkerProcess& worker_;
  const Request& request_;
  const BoxLimits& limits_;
  const std::uint32_t serial_;
  Grant grant_;

  std::int64_t outputLimit_ = 0;
  Clock::time_point began_ = Clock::now();
  Clock::time_point lastLook_ = began_;
  Clock::duration silentFor_{};
  Clock::duration stoppingFor_{};
  std::int64_t lastSign_ = 0;
};

}  // namespace quirn::box
