// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/box/boxed_context.h"

#include <stdexcept>

#include "core/box/boxed_folder.h"
#include "core/box/boxed_output.h"
#include "core/operation_error.h"

namespace quirn::box {
namespace fs = std::filesystem;
namespace {

MessageWriter message(Ask kind) {
  return std::move(MessageWriter().choice(kind));
}

}  // namespace

BoxedContext::BoxedContext(const platform::MessageSocket& messages, Outbox& outbox, Request request)
    : OperationContext(request.total, std::move(request.outputDirectory)),
      messages_(messages),
      outbox_(outbox),
      isPerFile_(request.isPerFile) {
  if (request.firstInput) opened_.emplace(0, std::move(request.firstInput));
  std::int64_t number = 0;
  for (const InputFile& input : request.inputs) inputs_.emplace(input.url, number++);
}

InputHandle BoxedContext::open(const InputFile& input) {
  return {platform::ReadableFile::of(opened(numberOf(input.url))), input.url};
}

platform::FileDescriptor BoxedContext::opened(std::int64_t number) {
  constexpr std::int64_t mostInTurn = 16;
  const std::scoped_lock guard(asking_);
  const bool isInTurn = number == lastOpened_ + 1;
  lastOpened_ = number;
  if (auto waiting = opened_.extract(number)) return std::move(waiting.mapped());
  opened_.clear();
  Answer answer = ask(message(Ask::open).number(number).number(isInTurn ? mostInTurn : 1), Tell::opened);
  platform::FileDescriptor first = answer.takeDescriptor();
  for (platform::FileDescriptor& descriptor : answer.descriptors) opened_.emplace(++number, std::move(descriptor));
  return first;
}

Neighbour BoxedContext::openNeighbour(const InputFile& input, const fs::path& name) {
  Answer answer = ask(message(Ask::neighbour).number(numberOf(input.url)).text(name.native()), Tell::neighbour);
  MessageReader reader = answer.reader();
  const auto place = reader.choice<Neighbour::Place>();
  if (place != Neighbour::Place::here) return {place, std::nullopt};
  return {place, InputHandle(platform::ReadableFile::of(answer.takeDescriptor()), std::string(reader.text()))};
}

std::vector<InputFile> BoxedContext::enumerate(const InputFile& folder) {
  const std::scoped_lock guard(asking_);
  Answer answer = ask(message(Ask::enumerate).number(numberOf(folder.url)), Tell::listed);
  MessageReader reader = answer.reader();
  const std::int64_t count = reader.number();
  std::int64_t number = reader.number();
  std::vector<InputFile> files;
  for (std::int64_t i = 0; i < count; ++i) {
    if (reader.isAtEnd()) {
      answer = hear();
      reader = answer.reader();
    }
    if (reader.choice<Tell>() != Tell::input) leave();
    files.push_back(readInputFile(reader, [this](const fs::path& file) { return typeOf(file); }));
    const std::scoped_lock inner(mutex_);
    inputs_.emplace(files.back().url, number++);
  }
  return files;
}

std::string BoxedContext::typeOf(const fs::path& input) {
  return std::string(ask(message(Ask::typeOf).number(numberOf(input)), Tell::done).reader().text());
}

MessageWriter BoxedContext::messageFor(Ask kind, const InputFile& beside, const OutputNaming& naming) const {
  return std::move(
      message(kind).number(numberOf(beside.url)).text(naming.stem).text(naming.suffix).text(naming.extension));
}

std::unique_ptr<StagedFolder> BoxedContext::stageFolder(const InputFile& beside, const OutputNaming& naming) {
  const Answer answer = ask(messageFor(Ask::stageFolder, beside, naming), Tell::staged);
  MessageReader reader = answer.reader();
  const std::int64_t number = reader.number();
  return std::make_unique<BoxedFolder>(*this, number, std::string(reader.text()));
}

std::unique_ptr<StagedOutput> BoxedContext::stage(const InputFile& beside, const OutputNaming& naming) {
  // Those of several outputs are told apart by their names before the run has ended.
  using enum BoxedOutput::Staging;
  return std::make_unique<BoxedOutput>(*this, beside, naming, isPerFile_ ? whenNeeded : atOnce);
}

OutputFile BoxedContext::publishFolder(std::int64_t number, OutputRole role) {
  const Answer answer = ask(message(Ask::publishFolder).number(number).choice(role), Tell::done);
  return remember(number, {platform::Uuid::random(), std::string(answer.reader().text()), role});
}

OutputFile BoxedContext::remember(std::int64_t number, OutputFile output) {
  const std::scoped_lock guard(mutex_);
  outputs_.emplace(output.id, number);
  return output;
}

void BoxedContext::publishStaged() {
  ask(message(Ask::publishStaged), Tell::done);
}

OutputFile BoxedContext::published(OutputFile output) {
  const Answer answer = ask(namedIn(Ask::published, output), Tell::done);
  output.url = std::string(answer.reader().text());
  return output;
}

void BoxedContext::noteState() {
  note(message(Ask::state)
           .text(cutText(currentStatus()))
           .number(progress().totalUnitCount())
           .number(progress().completedUnitCount())
           .number(platform::ReadableFile::readsOfThisProcess()));
}

MessageWriter BoxedContext::namedIn(Ask kind, const OutputFile& output) const {
  const std::scoped_lock guard(mutex_);
  const auto found = outputs_.find(output.id);
  if (found == outputs_.end()) throw std::logic_error("an output that was not published");
  return std::move(message(kind).number(found->second));
}

std::int64_t BoxedContext::numberOf(const fs::path& input) const {
  const std::scoped_lock guard(mutex_);
  const auto found = inputs_.find(input);
  if (found == inputs_.end()) throw OperationError::readFailed(input, "Not an input of this run.");
  return found->second;
}

platform::FileDescriptor BoxedContext::Answer::takeDescriptor() {
  if (descriptors.empty()) leave();
  platform::FileDescriptor first = std::move(descriptors.front());
  descriptors.erase(descriptors.begin());
  return first;
}

BoxedContext::Answer BoxedContext::hear() const {
  auto message = messages_.receive(platform::MessageSocket::Descriptors::accepted);
  if (!message) leave();
  return {std::move(message->bytes), std::move(message->descriptors)};
}

BoxedContext::Answer BoxedContext::ask(const MessageWriter& question, Tell expected) {
  const std::scoped_lock guard(asking_);
  note(question);
  outbox_.send();
  Answer answer = hear();
  MessageReader reader = answer.reader();
  const auto kind = reader.choice<Tell>();
  if (kind == Tell::failed) throw readError(reader);
  if (kind == Tell::outside) throw EntryOutside(std::string(reader.text()));
  if (kind == Tell::cancelled) throw CancellationError();
  if (kind != expected) leave();
  answer.bytes.erase(0, sizeof(std::int64_t));
  return answer;
}

}  // namespace quirn::box
