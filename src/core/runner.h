// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Starts a run on a thread of its own and brings its result back to the interface thread.

#pragma once

#include <exception>
#include <functional>
#include <memory>
#include <thread>
#include <variant>
#include <vector>

#include "core/box/box.h"
#include "core/operation_type.h"
#include "platform/main_queue.h"

namespace quirn {

// How a run ended.
class RunOutcome {
 public:
  explicit RunOutcome(OperationResult result) : value_(std::move(result)) {}
  explicit RunOutcome(std::exception_ptr error) : value_(std::move(error)) {}

  // The result, or the run's own error thrown unchanged: OperationError, CancellationError, or
  // another exception for a fault of ours.
  const OperationResult& result() const;

  // Null if the run threw.
  const OperationResult* resultIfAny() const { return std::get_if<OperationResult>(&value_); }

 private:
  std::variant<OperationResult, std::exception_ptr> value_;
};

// A run under way. Dropping it cancels the run and waits for its end.
class Run {
 public:
  Run(std::shared_ptr<OperationContext> context, std::thread task)
      : context_(std::move(context)), task_(std::move(task)) {}
  Run(Run&&) noexcept = default;
  Run& operator=(Run&&) = delete;
  ~Run();

  OperationContext& context() const { return *context_; }

 private:
  std::shared_ptr<OperationContext> context_;
  std::thread task_;
};

class OperationRunner {
 public:
  // Called once, on the interface thread.
  using Completion = std::function<void(const RunOutcome&)>;

  // Completions are posted to `queue`; it and `box` outlive the runs.
  explicit OperationRunner(platform::MainQueue& queue, box::Box& box = box::Box::shared()) : queue_(queue), box_(box) {}

  // In a new context, with the outputs in `outputDirectory`, or beside the inputs without one.
  [[nodiscard]] Run run(const OperationType& type, std::vector<InputFile> inputs,
                        std::optional<std::filesystem::path> outputDirectory, Completion completion) const;

  // In a context that the caller has made, to watch it. Cancelling its progress is the one way to
  // stop the run.
  [[nodiscard]] Run run(const OperationType& type, std::vector<InputFile> inputs,
                        std::shared_ptr<OperationContext> context, Completion completion) const;

  // With settings; they are copied, so changing them during the run has no effect on it.
  [[nodiscard]] Run runConfigured(const OperationType& type, std::vector<InputFile> inputs,
                                  const OperationConfig& config, std::shared_ptr<OperationContext> context,
                                  Completion completion) const;

  // The settings to begin with, read from the inputs: Box::configurationFor().
  using ConfigurationCompletion = std::function<void(std::unique_ptr<OperationConfig>)>;
  // `completion` gets null where it was cancelled.
  [[nodiscard]] Run configure(const OperationType& type, std::vector<InputFile> inputs,
                              std::shared_ptr<OperationContext> context, ConfigurationCompletion completion) const;

 private:
  using Work = std::function<OperationResult(OperationContext&)>;
  Run start(std::shared_ptr<OperationContext> context, Work work, Completion completion) const;

  platform::MainQueue& queue_;
  box::Box& box_;
};

}  // namespace quirn
