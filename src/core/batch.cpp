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

using Clock = std::chrono::steady_clock;

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

// How many files a child takes next.
class Pace {
 public:
  explicit Pace(const Grouping& grouping) : grouping_(grouping) {}

  std::int64_t files() const { return files_; }

  // `count` files have been processed since `began`.
  void learn(std::int64_t count, Clock::time_point began) {
    const Clock::duration perFile = (Clock::now() - began) / count;
    const std::int64_t inTime = grouping_.time / std::max(perFile, Clock::duration(1));
    files_ = std::clamp<std::int64_t>(std::min(inTime, 2 * files_), 1, grouping_.mostFiles);
  }

 private:
  const Grouping& grouping_;
  std::int64_t files_ = 1;
};

// The child tasks of one batch. Each processes some files, and on their end begins with the next, so
// that the window slides without waiting for the driver.
class Children {
 public:
  Children(std::span<const InputFile> inputs, OperationContext& context, const GroupWorker& worker,
           const Grouping& grouping)
      : context_(context), worker_(worker), grouping_(grouping), waiting_(inputs) {
    const auto processors = static_cast<std::size_t>(platform::activeProcessorCount());
    running_ = children_ = std::min(inputs.size(), processors);
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
    Pace pace(grouping_);
    std::unique_lock guard(mutex_);
    while (!waiting_.empty() && !isStopped()) {
      const std::span<const InputFile> files = takeGroup(pace.files());
      guard.unlock();
      const auto began = Clock::now();
      process(files);
      pace.learn(std::ssize(files), began);
      guard.lock();
    }
    --running_;
    // Still under the lock: once it is released, this object may be gone.
    ended_.notify_one();
  }

  // At most so many, and as few as leave some for the other children; none of them large but the first. mutex_ is held.
  std::span<const InputFile> takeGroup(std::int64_t most) {
    const std::size_t share = (waiting_.size() + children_ - 1) / children_;
    const std::size_t limit = std::min(share, static_cast<std::size_t>(most));
    std::size_t count = 1;
    std::int64_t bytes = waiting_.front().size;
    while (count < limit && (bytes += waiting_[count].size) <= grouping_.mostBytes) ++count;
    const std::span<const InputFile> files = waiting_.first(count);
    waiting_ = waiting_.subspan(count);
    return files;
  }

  void process(std::span<const InputFile> files) {
    auto input = files.begin();
    const auto report = [&](const FileEnding& ending) { add(*input++, ending); };
    try {
      worker_(files, report);
    } catch (...) {  // A fault of ours must cost no more than these files.
      const auto again = [fault = std::current_exception()]() -> OutputFile { std::rethrow_exception(fault); };
      while (input != files.end()) add(*input++, again);
    }
  }

  void add(const InputFile& input, const FileEnding& ending) {
    auto result = resultOf(input, ending);
    const std::scoped_lock guard(mutex_);
    if (auto* outcome = std::get_if<Outcome>(&result)) {
      files_.push_back({&input, std::move(*outcome)});
    } else {
      cancellation_ = std::get<std::exception_ptr>(result);
      context_.requestStop();
    }
    if (files_.size() == 1) ended_.notify_one();
  }

  static std::variant<Outcome, std::exception_ptr> resultOf(const InputFile& input, const FileEnding& ending) {
    try {
      return Outcome(ending());
    } catch (const CancellationError&) {
      return std::current_exception();
    } catch (const OperationError& error) {
      if (error.kind() == OperationError::Kind::cancelled) return std::current_exception();
      return Outcome(failed(input, error));
    } catch (...) {  // Anything else is a fault of ours and must cost no more than this file.
      return Outcome(failed(input, std::nullopt));
    }
  }

  OperationContext& context_;
  const GroupWorker& worker_;
  const Grouping& grouping_;
  std::size_t children_ = 0;

  std::mutex mutex_;
  std::condition_variable ended_;
  // All guarded by mutex_.
  std::span<const InputFile> waiting_;
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
  const GroupWorker one = [&](std::span<const InputFile> files, const auto& report) {
    report([&] { return worker(files.front()); });
  };
  return runBatch(inputs, context, one, {.mostFiles = 1});
}

OperationResult runBatch(std::span<const InputFile> inputs, OperationContext& context, const GroupWorker& worker,
                         const Grouping& grouping) {
  context.progress().setTotalUnitCount(std::max<std::int64_t>(1, std::ssize(inputs)));
  Children children(inputs, context, worker, grouping);
  Gathering gathering(context);
  for (;;) {
    std::vector<Ended> files = children.takeEnded();
    if (files.empty()) return std::move(gathering).result();
    context.publishStaged();
    for (Ended& ended : files) gathering.add(std::move(ended));
  }
}

}  // namespace quirn
