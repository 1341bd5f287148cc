// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The one place that decides where an operation's code runs, and runs it there: in this process, or in a worker that
// holds nothing but the files of its request.
//
// What comes out is the same. Only a file that stops its worker, keeps it busy without end or makes it ask for what it
// was not given shows that there was one: it fails with a sentence, and the next file gets a new worker.

#pragma once

#include <atomic>
#include <cstddef>
#include <filesystem>
#include <functional>
#include <memory>
#include <span>

#include "core/box/grant.h"
#include "core/operation_type.h"

namespace quirn::box {

class WorkerPool;
struct Requests;

class Box {
 public:
  // `program` is started as a worker. Tests have one of their own, and small limits.
  explicit Box(const std::filesystem::path& program, BoxLimits limits = {});
  ~Box();
  Box(const Box&) = delete;
  Box& operator=(const Box&) = delete;

  // The one of this program.
  static Box& shared();

  // Runs the operation on the calling thread, which waits for workers where it is boxed. `config` may be null for the
  // default settings. Throws as QuirnOperation::run() does. May be called from several threads.
  OperationResult run(const OperationType& type, std::span<const InputFile> inputs, const OperationConfig* config,
                      OperationContext& context);

  // Begins to start the workers that a run on so many inputs will need, while those are still looked at.
  void prepare(const OperationType& type, std::ptrdiff_t inputCount);

  // The settings to begin with on these inputs: the defaults, and what the operation reads from the files. Where they
  // can't be read the defaults stand; the run will tell why. Throws CancellationError.
  std::unique_ptr<OperationConfig> configurationFor(const OperationType& type, std::span<const InputFile> inputs,
                                                    OperationContext& context);

 private:
  std::unique_ptr<OperationConfig> readConfiguration(const OperationType& type, std::span<const InputFile> inputs,
                                                     OperationContext& context);
  using Report = std::function<void(const FileEnding&)>;
  // Each input is a request of its own; its ending is reported.
  void runOnEach(const Requests& requests, const Report& report);
  // The same by one warm worker, as far as it gets. Gives those that are left.
  std::span<const InputFile> runTogether(const Requests& requests, const Report& report);
  // Serves one request, until its worker has done so or is out of the question, and passes what has come of it to
  // `take`.
  void request(const Requests& wanted, const BoxLimits& limits, const std::function<void(Grant&)>& take);
  OperationResult resultOf(const Requests& wanted);

  BoxLimits limits_;
  std::unique_ptr<WorkerPool> pool_;
  std::atomic<std::uint32_t> serial_ = 0;
};

// True where the person has switched the box off to look for a fault: QUIRN_BOX=off, which a release doesn't know.
bool isBoxOff();

}  // namespace quirn::box
