// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The context of an operation inside a worker: it reaches no file itself, and asks the program that started it for
// each.

#pragma once

#include <atomic>
#include <map>
#include <mutex>
#include <vector>

#include "core/box/message.h"
#include "core/box/outbox.h"
#include "core/box/protocol.h"
#include "core/operation_context.h"
#include "platform/message_socket.h"

namespace quirn::box {

class BoxedContext final : public OperationContext {
 public:
  struct Request {
    std::int64_t total = 1;
    bool isPerFile = false;
    std::optional<std::filesystem::path> outputDirectory;
    std::vector<InputFile> inputs;
    platform::FileDescriptor firstInput;  // if it is open already
  };
  // `messages` and `outbox`, which sends to them, outlive it.
  BoxedContext(const platform::MessageSocket& messages, Outbox& outbox, Request request);

  InputHandle open(const InputFile& input) override;
  Neighbour openNeighbour(const InputFile& input, const std::filesystem::path& name) override;
  std::vector<InputFile> enumerate(const InputFile& folder) override;
  using OperationContext::stage;
  std::unique_ptr<StagedOutput> stage(const InputFile& beside, const OutputNaming& naming) override;
  std::unique_ptr<StagedFolder> stageFolder(const InputFile& beside, const OutputNaming& naming) override;
  void publishStaged() override;
  OutputFile published(OutputFile output) override;
  // The program's own run does it.
  void finish() override {}

  // The type of an input. Throws as open() does for a file that is none.
  std::string typeOf(const std::filesystem::path& input);

  // What needs no answer; it goes with the next message that is sent.
  void note(const MessageWriter& message) { outbox_.note(message); }

  struct Answer {
    std::string bytes;
    std::vector<platform::FileDescriptor> descriptors;
    // The first that is left; there must be one.
    platform::FileDescriptor takeDescriptor();
    MessageReader reader() const { return MessageReader(bytes); }
  };
  // Waits for the answer, which is without its kind. Throws the program's own error instead where that is the answer.
  Answer ask(const MessageWriter& question, Tell expected);

  // The message that asks for an output beside an input.
  MessageWriter messageFor(Ask kind, const InputFile& beside, const OutputNaming& naming) const;

  OutputFile publishFolder(std::int64_t number, OutputRole role);

  // Gives the output back, and knows its number from then on.
  OutputFile remember(std::int64_t number, OutputFile output);

  // For an output that the program has not numbered: below zero.
  std::int64_t nextOwnNumber() { return --lastOwnNumber_; }

  // Notes how far the work is.
  void noteState();

  // The message that names an output of this context. Throws std::logic_error for another one.
  MessageWriter namedIn(Ask kind, const OutputFile& output) const;

 private:
  // Opens further inputs as well where they are opened in turn, since asking costs more than opening.
  platform::FileDescriptor opened(std::int64_t number);
  std::int64_t numberOf(const std::filesystem::path& input) const;
  Answer hear() const;

  const platform::MessageSocket& messages_;
  Outbox& outbox_;
  const bool isPerFile_;
  std::atomic<std::int64_t> lastOwnNumber_ = 0;
  std::recursive_mutex asking_;  // held from a question to its answer
  // Guarded by asking_.
  std::map<std::int64_t, platform::FileDescriptor> opened_;  // inputs, by number, that nobody has asked for yet
  std::int64_t lastOpened_ = -1;                             // number of the input that was asked for last

  mutable std::mutex mutex_;
  // All guarded by mutex_.
  std::map<std::filesystem::path, std::int64_t> inputs_;
  std::map<platform::Uuid, std::int64_t> outputs_;
};

}  // namespace quirn::box
