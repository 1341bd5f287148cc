// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/batch.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <optional>
#include <utility>
#include <variant>
#include <vector>

#include "core/operation_error.h"
#include "platform/task_pool.h"

namespace quirn {
namespace {

struct Failed {
  FileFailure failure;
  std::optional<OperationError> error;
};
using Outcome = std::variant<OutputFile, Failed>;

struct Ended {
  const InputFile* input;
  Outcome outcome;
};

Failed failed(const InputFile& input, std::optional<OperationError> error) {
  std::string message = error ? error->userMessage() : "Couldn’t process this file.";
  return {{platform::Uuid::random(), input.fileName(), std::move(message)}, std::move(error)};
}

// The child tasks of one batch. Each processes a file, and on its end begins with the next one, so
// that the window slides without waiting for the driver.
class Children {
 public:
  Children(std::span<const InputFile> inputs, OperationContext& context, const FileWorker& worker)
      : inputs_(inputs), context_(context), worker_(worker) {
    const auto processors = static_cast<std::size_t>(platform::activeProcessorCount());
    running_ = std::min(inputs.size(), processors);
    for (std::size_t i = running_; i > 0; --i) platform::TaskPool::shared().submit([this] { run(); });
  }
  Children(const Children&) = delete;
  Children& operator=(const Children&) = delete;
  ~Children() {
    std::unique_lock guard(mutex_);
    if (running_ > 0) context_.requestStop();
    ended_.wait(guard, [this] { return running_ == 0; });
  }

  // Waits until some files have ended and gives them; none once all have. Files that end shortly
  // after one another come together, since their outputs are flushed together. Throws what
  // cancelled the batch when nothing runs any more.
  std::vector<Ended> takeEnded() {
    constexpr std::chrono::milliseconds gatheringTime{50};
    std::unique_lock guard(mutex_);
    ended_.wait(guard, [this] { return running_ == 0 || (!files_.empty() && !isStopped()); });
    ended_.wait_for(guard, gatheringTime, [this] { return running_ == 0; });
    if (isStopped()) ended_.wait(guard, [this] { return running_ == 0; });
    if (cancellation_) std::rethrow_exception(cancellation_);
    context_.checkCancellation();
    return std::exchange(files_, {});
  }

 private:
  bool isStopped() const { return cancellation_ != nullptr || context_.stopToken().stop_requested(); }

  void run() {
    std::unique_lock guard(mutex_);
    while (next_ < inputs_.size() && !isStopped()) {
      const InputFile& input = inputs_[next_++];
      guard.unlock();
      auto result = process(input);
      guard.lock();
      if (auto* outcome = std::get_if<Outcome>(&result)) {
        files_.push_back({&input, std::move(*outcome)});
      } else {
        cancellation_ = std::get<std::exception_ptr>(result);
        context_.requestStop();
      }
      if (files_.size() == 1) ended_.notify_one();
    }
    --running_;
    // Still under the lock: once it is released, this object may be gone.
    ended_.notify_one();
  }

  std::variant<Outcome, std::exception_ptr> process(const InputFile& input) const {
    try {
      return Outcome(worker_(input));
    } catch (const CancellationError&) {
      return std::current_exception();
    } catch (const OperationError& error) {
      if (error.kind() == OperationError::Kind::cancelled) return std::current_exception();
      return Outcome(failed(input, error));
    } catch (...) {  // Anything else is a fault of ours and must cost no more than this file.
      return Outcome(failed(input, std::nullopt));
    }
  }

  std::span<const InputFile> inputs_;
  OperationContext& context_;
  const FileWorker& worker_;

  std::mutex mutex_;
  std::condition_variable ended_;
  // All guarded by mutex_.
  std::size_t next_ = 0;
  std::size_t running_ = 0;
  std::vector<Ended> files_;
  std::exception_ptr cancellation_;
};

class Gathering {
 public:
  explicit Gathering(OperationContext& context) : context_(context) {}

  void add(Ended ended) {
    Outcome outcome = confirmed(std::move(ended));
    if (auto* output = std::get_if<OutputFile>(&outcome)) {
      result_.outputs.push_back(std::move(*output));
    } else {
      addFailure(std::get<Failed>(std::move(outcome)));
    }
    context_.progress().complete(1);
  }

  OperationResult result() && {
    if (result_.outputs.empty()) throwNothingDone();
    if (!result_.failures.empty()) result_.summary = failureSummary(result_.outputs.size(), result_.failures);
    return std::move(result_);
  }

 private:
  // An output that could not be brought to the disk is a failure of its input.
  Outcome confirmed(Ended ended) const {
    const auto* output = std::get_if<OutputFile>(&ended.outcome);
    if (output == nullptr) return std::move(ended.outcome);
    try {
      return context_.published(*output);
    } catch (const OperationError& error) {
      return failed(*ended.input, error);
    }
  }

  void addFailure(Failed failed) {
    result_.failures.push_back(std::move(failed.failure));
    if (!firstError_) firstError_ = std::move(failed.error);
  }

  [[noreturn]] void throwNothingDone() const {
    if (firstError_) throw OperationError(*firstError_);
    const bool untried = result_.failures.empty();
    throw OperationError::engineFailed("batch",
                                       untried ? "Couldn’t process these files." : result_.failures.front().message);
  }

  OperationContext& context_;
  OperationResult result_;
  std::optional<OperationError> firstError_;
};

}  // namespace

OperationResult runBatch(std::span<const InputFile> inputs, OperationContext& context, const FileWorker& worker) {
  context.progress().setTotalUnitCount(std::max<std::int64_t>(1, std::ssize(inputs)));
  Children children(inputs, context, worker);
  Gathering gathering(context);
  for (;;) {
    std::vector<Ended> files = children.takeEnded();
    if (files.empty()) return std::move(gathering).result();
    context.publishStaged();
    for (Ended& ended : files) gathering.add(std::move(ended));
  }
}

}  // namespace quirn
