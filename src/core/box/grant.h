// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What one request to a worker may reach, and what has come of it. The worker may be in a stranger's hands: whatever it
// says, it gets no file but those of this request, and makes no output but beside them.

#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "core/batch.h"
#include "core/box/folder_grant.h"
#include "core/box/message.h"
#include "core/box/protocol.h"
#include "core/budgets.h"
#include "core/operation_context.h"
#include "core/operation_type.h"

namespace quirn::box {

// A request of the worker that an honest one wouldn't make.
class OutsideGrant final : public std::runtime_error {
 public:
  OutsideGrant() : std::runtime_error("outside the grant") {}
};

// The limits that the box itself watches. Tests make them small.
struct BoxLimits {
  std::chrono::milliseconds silence = std::chrono::seconds(limitOf(Budget::secondsOfSilence));
  std::int64_t memory = limitOf(Budget::memory);
  std::int64_t output = alwaysAllowedOutput;  // bytes; more for large inputs
  std::int64_t outputs = limitOf(Budget::outputs);
  std::int64_t messages = 100'000;  // of one request, and as many again every hundred seconds
  // A backstop for what seems alive and never ends.
  std::chrono::seconds processorTime = std::chrono::hours(24);
  // How long a worker may take to notice that it is to stop.
  std::chrono::milliseconds stopping{2000};
  // What a worker is handed at once.
  Grouping grouping{};
};

// What sentences call the inputs: the name of the one, or "One of these files".
std::string nameFor(std::span<const InputFile> inputs);

// Opens as many of the inputs, from the first on, as can be opened and go with one message.
std::vector<InputHandle> openRun(std::span<const InputFile> inputs, OperationContext& context);
std::vector<int> descriptorsOf(std::span<const InputHandle> files);

// The largest file that a worker may write for so many bytes of inputs.
std::int64_t outputLimitFor(std::int64_t bytesIn, const BoxLimits& limits);

class Grant {
 public:
  using Send = std::function<void(const MessageWriter& message, std::span<const int> descriptors)>;

  // All outlive it.
  Grant(const OperationType& type, std::span<const InputFile> inputs, OperationContext& context,
        const BoxLimits& limits);

  // Takes what the worker sent at once, and answers where it asks; gives back what stands behind the end of the
  // request. Throws DamagedMessage or OutsideGrant for a message that ends the worker, and OperationError for a budget
  // that is overdrawn. Not after the end.
  std::string_view take(std::string_view bytes, const Send& send);

  bool hasEnded() const { return ending_.has_value(); }
  // How the request ended, or its error thrown as it would be in process. Once it has.
  OperationResult result();

  std::int64_t total() const { return total_; }
  std::int64_t inputCount() const { return std::ssize(inputs_); }
  // How many messages were taken.
  std::int64_t messageCount() const { return messageCount_; }

  // What the worker has read from the inputs.
  const std::vector<Setting>& settings() const { return settings_; }

  bool hasPublished() const { return !published_.empty(); }

  // The largest file that the worker may write now, in bytes.
  std::int64_t outputLimit() const { return outputLimitFor(bytesIn_, limits_); }
  // Throws OperationError if the outputs have grown beyond that together.
  void checkOutputs() const;

  // Changes whenever the worker has got on.
  std::int64_t signOfLife() const;

 private:
  using Ending = std::variant<OperationResult, OperationError, CancellationError, std::runtime_error>;

  const InputFile& readInput(MessageReader& message) const;
  std::unique_ptr<StagedOutput> takeStaged(MessageReader& message);
  FolderGrant& readFolder(MessageReader& message);
  std::int64_t bytesStaged() const;
  bool isPlainName(std::string_view part, const InputFile& input) const;

  bool answer(Ask kind, MessageReader& message, const Send& send);
  bool note(Ask kind, MessageReader& message);
  bool end(Ask kind, MessageReader& message);

  void open(MessageReader& message, const Send& send);
  void openNeighbour(MessageReader& message, const Send& send);
  void enumerate(MessageReader& message, const Send& send);
  OutputNaming readNaming(MessageReader& message, const InputFile& input) const;
  void stage(MessageReader& message, const Send& send);
  void stageFolder(MessageReader& message, const Send& send);
  void publishFolder(MessageReader& message, const Send& send);
  void checkEntries(const FolderGrant& folder) const;
  void publish(MessageReader& message);
  void publishWhole(MessageReader& message);
  template <class Step>
  void keepingFault(Step step);
  void noteState(MessageReader& message);
  void requireStop() const;
  OperationError explained(OperationError error) const;

  const OperationType& type_;
  OperationContext& context_;
  const BoxLimits& limits_;
  std::string name_;
  std::vector<InputFile> inputs_;
  std::size_t grantedCount_;  // of inputs_, before folders were looked into
  std::size_t enumerationCount_ = 0;
  std::size_t bytesTold_ = 0;
  std::set<std::filesystem::path> enumerated_;
  std::int64_t bytesIn_ = 0;

  std::int64_t messageCount_ = 0;
  std::int64_t stagedCount_ = 0;
  std::int64_t wholeCount_ = 0;
  std::map<std::int64_t, std::unique_ptr<StagedOutput>> staged_;
  std::map<std::int64_t, FolderGrant> folders_;
  std::map<std::int64_t, OutputFile> published_;
  std::int64_t bytesPublished_ = 0;
  bool wasFull_ = false;  // an output has reached its limit

  std::string status_;
  std::int64_t completed_ = 0;
  std::int64_t total_;
  std::int64_t steps_ = 0;  // what was asked, and what has changed in the state
  std::int64_t reads_ = -1;
  OperationResult result_;
  std::vector<Setting> settings_;
  std::set<std::int64_t> listed_;        // outputs of result_
  std::optional<OperationError> fault_;  // of an output; what the request will end with
  std::optional<Ending> ending_;
};

}  // namespace quirn::box
