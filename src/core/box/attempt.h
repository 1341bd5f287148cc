// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Requests that one worker serves one after the other: what it asks is answered, and how it behaves is watched.

#pragma once

#include <chrono>
#include <cstdint>
#include <exception>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "core/box/grant.h"
#include "platform/worker_process.h"

namespace quirn::box {

// Of an operation on single files each input is a request of its own; they have the rest in common.
struct Requests {
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
  // Is given what has come of each request, as it ends. Lets no exception out.
  using Ended = std::function<void(Grant&)>;

  // All outlive it. `serial` tells these requests from all others of the worker.
  Attempt(platform::WorkerProcess& worker, const Requests& requests, const BoxLimits& limits, std::uint32_t serial);

  // Until all have ended. Throws WorkerLost, OperationError where a budget is overdrawn, and what comes of a fault of
  // ours; the worker is to be killed then.
  void serve(const Ended& ended = [](Grant&) {});

  // What has come of the one that is served, or was the last to be.
  Grant& grant() { return *grant_; }

  // The inputs of those that have not ended.
  std::span<const InputFile> unserved() const { return unserved_; }

 private:
  using Clock = std::chrono::steady_clock;  // stands still while the machine sleeps

  void begin();
  void send(const MessageWriter& message, std::span<const int> descriptors = {});
  void beginGrant();
  void endGrant(const Ended& ended);
  void takeNext(const Ended& ended);
  void limitWorker();
  void watch();

  platform::WorkerProcess& worker_;
  const Requests& requests_;
  const BoxLimits& limits_;
  const std::uint32_t serial_;
  std::span<const InputFile> unserved_;
  std::optional<Grant> grant_;

  Clock::time_point began_ = Clock::now();  // what is served
  Clock::time_point lastLook_ = began_;
  Clock::duration silentFor_{};
  Clock::duration stoppingFor_{};
  std::int64_t lastSign_ = 0;
};

}  // namespace quirn::box
