// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/box/grant.h"

#include <algorithm>
#include <limits>

#include "platform/file_status.h"
#include "platform/message_socket.h"

namespace quirn::box {
namespace fs = std::filesystem;
namespace {

constexpr std::size_t mostOpenOutputs = 64;
constexpr std::size_t mostOpenFolders = 4;
constexpr std::size_t longestNamePart = 255;     // bytes
constexpr std::size_t mostBytesTold = 64 << 20;  // of failures
constexpr std::size_t mostEnumerations = 4;      // of each input

MessageWriter message(Tell kind) {
  return std::move(MessageWriter().choice(kind));
}

std::int64_t sizeOf(const StagedOutput& output) {
  return platform::sizeOfOpen(output.descriptor());
}

// Files may claim sizes whose sum is no number any more.
std::int64_t saturatedSum(std::int64_t bytes, const InputFile& input) {
  constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max() / 2;
  return std::min(bytes, most) + std::clamp<std::int64_t>(input.size, 0, most - std::min(bytes, most));
}

std::span<const int> only(const int& descriptor) {
  return {&descriptor, 1};
}

bool isControl(char character) {
  return static_cast<unsigned char>(character) < 0x20 || character == 0x7F;
}

}  // namespace

std::vector<InputHandle> openRun(std::span<const InputFile> inputs, OperationContext& context) {
  std::vector<InputHandle> opened;
  try {
    for (const InputFile& input : inputs.first(std::min(inputs.size(), platform::mostDescriptors)))
      opened.push_back(context.open(input));
  } catch (const OperationError&) {  // Whoever needs that one asks for it.
  }
  return opened;
}

std::vector<int> descriptorsOf(std::span<const InputHandle> files) {
  std::vector<int> descriptors(files.size());
  std::ranges::transform(files, descriptors.begin(), &InputHandle::descriptor);
  return descriptors;
}

std::string nameFor(std::span<const InputFile> inputs) {
  return inputs.size() == 1 ? inputs.front().fileName() : "One of these files";
}

std::int64_t outputLimitFor(std::int64_t bytesIn, const BoxLimits& limits) {
  constexpr std::int64_t ratio = limitOf(Budget::bytesOutPerByteIn);
  const std::int64_t scaled = std::min(bytesIn, std::numeric_limits<std::int64_t>::max() / ratio) * ratio;
  return std::max(limits.output, scaled);
}

Grant::Grant(const OperationType& type, std::span<const InputFile> inputs, OperationContext& context,
             const BoxLimits& limits)
    : type_(type),
      context_(context),
      limits_(limits),
      name_(nameFor(inputs)),
      inputs_(inputs.begin(), inputs.end()),
      grantedCount_(inputs.size()),
      total_(context.progress().totalUnitCount()) {
  for (const InputFile& input : inputs) bytesIn_ = saturatedSum(bytesIn_, input);
}

std::string_view Grant::take(std::string_view bytes, const Send& send) {
  MessageReader message(bytes);
  do {
    const auto kind = message.choice<Ask>();
    // What goes into a folder is counted there.
    if (kind != Ask::makeFolder && kind != Ask::writeFile && kind != Ask::beginFile) ++messageCount_;
    if (!answer(kind, message, send) && !note(kind, message) && !end(kind, message)) throw OutsideGrant();
  } while (!message.isAtEnd() && !hasEnded());
  return message.rest();
}

OperationResult Grant::result() {
  if (const auto* error = std::get_if<OperationError>(&*ending_)) throw OperationError(*error);
  if (std::holds_alternative<CancellationError>(*ending_)) throw CancellationError();
  if (const auto* fault = std::get_if<std::runtime_error>(&*ending_)) throw std::runtime_error(*fault);
  return std::get<OperationResult>(std::move(*ending_));
}

std::int64_t Grant::bytesStaged() const {
  std::int64_t bytes = 0;
  for (const auto& [number, output] : staged_) bytes += sizeOf(*output);
  for (const auto& [number, folder] : folders_) bytes += folder.bytes();
  return bytes;
}

void Grant::checkOutputs() const {
  if (bytesPublished_ + bytesStaged() > outputLimit()) throw breachOf(Budget::bytesOutPerByteIn, name_);
}

std::int64_t Grant::signOfLife() const {
  std::int64_t entries = 0;
  for (const auto& [number, folder] : folders_) entries += folder.entryCount();
  return steps_ + bytesPublished_ + bytesStaged() + entries;
}

// The questions. An error of the answer is the worker's to deal with.
bool Grant::answer(Ask kind, MessageReader& question, const Send& send) {
  if (kind < Ask::open || kind > Ask::published) return false;
  ++steps_;
  try {
    switch (kind) {
      case Ask::open: open(question, send); break;
      case Ask::neighbour: openNeighbour(question, send); break;
      case Ask::enumerate: enumerate(question, send); break;
      case Ask::typeOf: send(message(Tell::done).text(readInput(question).contentType.mimeType()), {}); break;
      case Ask::stage: stage(question, send); break;
      case Ask::stageFolder: stageFolder(question, send); break;
      case Ask::publishFolder: publishFolder(question, send); break;
      case Ask::beginFile: {
        FolderGrant& folder = readFolder(question);
        send(message(Tell::opened), only(folder.beginFile(question)));
        break;
      }
      case Ask::link: {
        FolderGrant& folder = readFolder(question);
        send(message(Tell::linked).number(folder.link(question)), {});
        break;
      }
      case Ask::settle:
        readFolder(question).settle();
        send(message(Tell::done).text(""), {});
        break;
      case Ask::publishStaged:
        if (type_.isPerFile()) throw OutsideGrant();
        context_.publishStaged();
        send(message(Tell::done).text(""), {});
        break;
      default: {
        const auto output = published_.find(question.number());
        if (output == published_.end()) throw OutsideGrant();
        send(message(Tell::done).text(context_.published(output->second).url.native()), {});
      }
    }
  } catch (const OperationError& error) {
    MessageWriter failed = message(Tell::failed);
    write(failed, error);
    send(failed, {});
  } catch (const EntryOutside& outside) {
    send(message(Tell::outside).text(cutText(outside.name())), {});
  } catch (const CancellationError&) {
    send(message(Tell::cancelled), {});
  }
  return true;
}

const InputFile& Grant::readInput(MessageReader& message) const {
  return inputs_[static_cast<std::size_t>(message.number(std::ssize(inputs_) - 1))];
}

void Grant::open(MessageReader& question, const Send& send) {
  const auto first = static_cast<std::size_t>(question.number(std::ssize(inputs_) - 1));
  const auto most = static_cast<std::size_t>(question.number(platform::mostDescriptors));
  const auto wanted = std::span(inputs_).subspan(first).first(std::min(most, inputs_.size() - first));
  std::vector<InputHandle> opened = openRun(wanted, context_);
  // The worker is told why it didn't get the first.
  if (opened.empty()) opened.push_back(context_.open(inputs_[first]));
  const std::vector<int> descriptors = descriptorsOf(opened);
  send(message(Tell::opened), descriptors);
}

void Grant::openNeighbour(MessageReader& question, const Send& send) {
  const InputFile& input = readInput(question);
  const std::string name(question.text());
  if (!type_.readsNeighbours()) throw OutsideGrant();
  const Neighbour neighbour = context_.openNeighbour(input, name);
  MessageWriter reply = message(Tell::neighbour).choice(neighbour.place);
  if (neighbour.place != Neighbour::Place::here) return send(reply, {});
  send(reply.text(neighbour.file->url().native()), only(neighbour.file->descriptor()));
}

void Grant::enumerate(MessageReader& question, const Send& send) {
  const InputFile& folder = readInput(question);
  if (!folder.isDirectory || ++enumerationCount_ > mostEnumerations * grantedCount_) throw OutsideGrant();
  const std::vector<InputFile> files = context_.enumerate(folder);
  if (std::ssize(inputs_) + std::ssize(files) > limitOf(Budget::entries))
    throw breachOf(Budget::entries, folder.fileName());
  const bool isFirst = enumerated_.insert(folder.url).second;
  MessageWriter answer = message(Tell::listed).number(std::ssize(files)).number(std::ssize(inputs_));
  for (const InputFile& file : files) {
    MessageWriter input = message(Tell::input);
    write(input, file);
    if (answer.bytes().size() + input.bytes().size() > platform::longestMessage) send(std::exchange(answer, {}), {});
    answer.append(input);
    if (isFirst) bytesIn_ = saturatedSum(bytesIn_, file);
  }
  send(answer, {});
  inputs_.insert(inputs_.end(), files.begin(), files.end());
}

// A part of a name that an operation made up, or took over from its input.
bool Grant::isPlainName(std::string_view part, const InputFile& input) const {
  if (part.size() > longestNamePart || part.find('/') != std::string_view::npos) return false;
  if (part.find('\0') != std::string_view::npos) return false;
  return std::ranges::none_of(part, isControl) || input.fileName().find(part) != std::string::npos;
}

OutputNaming Grant::readNaming(MessageReader& message, const InputFile& input) const {
  OutputNaming naming;
  for (std::string* const part : {&naming.stem, &naming.suffix, &naming.extension}) {
    *part = message.text();
    if (!isPlainName(*part, input)) throw OutsideGrant();
  }
  // Hidden files are made beside hidden files alone.
  const bool isHidden = naming.stem.empty() || naming.stem.starts_with('.');
  if (isHidden && !input.fileName().starts_with('.')) throw OutsideGrant();
  return naming;
}

void Grant::stage(MessageReader& question, const Send& send) {
  const InputFile& input = readInput(question);
  const OutputNaming naming = readNaming(question, input);
  if (stagedCount_ >= limits_.outputs) throw breachOf(Budget::outputs, name_);
  if (staged_.size() >= mostOpenOutputs)
    throw OperationError::engineFailed("writing", "Too many outputs are open at once.");
  auto output = context_.stage(input, naming);
  send(message(Tell::staged).number(stagedCount_).text(output->url().native()), only(output->descriptor()));
  staged_.emplace(stagedCount_++, std::move(output));
}

void Grant::stageFolder(MessageReader& question, const Send& send) {
  const InputFile& input = readInput(question);
  const OutputNaming naming = readNaming(question, input);
  if (stagedCount_ >= limits_.outputs) throw breachOf(Budget::outputs, name_);
  if (folders_.size() >= mostOpenFolders)
    throw OperationError::engineFailed("writing", "Too many folders are open at once.");
  FolderGrant folder(context_.stageFolder(input, naming));
  send(message(Tell::staged).number(stagedCount_).text(folder.url().native()), {});
  folders_.emplace(stagedCount_++, std::move(folder));
}

FolderGrant& Grant::readFolder(MessageReader& message) {
  const auto found = folders_.find(message.number());
  if (found == folders_.end()) throw OutsideGrant();
  checkEntries(found->second);
  return found->second;
}

void Grant::checkEntries(const FolderGrant& folder) const {
  if (folder.entryCount() > limitOf(Budget::entries)) throw breachOf(Budget::entries, name_);
}

void Grant::publishFolder(MessageReader& question, const Send& send) {
  checkOutputs();
  const std::int64_t number = MessageReader(question).number();
  FolderGrant& folder = readFolder(question);
  const auto role = question.choice<OutputRole>();
  const std::int64_t bytes = folder.bytes();
  const OutputFile output = folder.publish(role);
  folders_.erase(number);
  bytesPublished_ += bytes;
  published_.emplace(number, output);
  send(message(Tell::done).text(output.url.native()), {});
}

// What the worker tells without being answered.
bool Grant::note(Ask kind, MessageReader& message) {
  switch (kind) {
    case Ask::publish: publish(message); return true;
    case Ask::publishWhole: publishWhole(message); return true;
    case Ask::discard: takeStaged(message); return true;
    case Ask::discardFolder: {
      const std::int64_t number = message.number();
      if (folders_.erase(number) == 0) throw OutsideGrant();
      return true;
    }
    case Ask::makeFolder: readFolder(message).makeFolder(message); return true;
    case Ask::writeFile: readFolder(message).writeFile(message); return true;
    case Ask::abandonFile: readFolder(message).abandonFile(); return true;
    case Ask::state: noteState(message); return true;
    case Ask::output: {
      const std::int64_t number = message.number();
      if (fault_) return true;
      const auto output = published_.find(number);
      if (output == published_.end() || !listed_.insert(number).second) throw OutsideGrant();
      result_.outputs.push_back(output->second);
      return true;
    }
    case Ask::failure: {
      const std::string fileName(message.text(longestText));
      const std::string text(message.text(longestText));
      bytesTold_ += fileName.size() + text.size();
      if (type_.isPerFile() || bytesTold_ > mostBytesTold) throw OutsideGrant();
      result_.failures.push_back({platform::Uuid::random(), fileName, text});
      return true;
    }
    case Ask::setting: {
      readPiece(message, settings_);
      bytesTold_ += longestPiece;
      if (!type_.isConfiguredFromInputs() || bytesTold_ > mostBytesTold) throw OutsideGrant();
      return true;
    }
    default: return false;
  }
}

std::unique_ptr<StagedOutput> Grant::takeStaged(MessageReader& message) {
  const auto found = staged_.find(message.number());
  if (found == staged_.end()) throw OutsideGrant();
  wasFull_ = wasFull_ || sizeOf(*found->second) >= outputLimit();
  auto output = std::move(found->second);
  staged_.erase(found);
  return output;
}

void Grant::publish(MessageReader& message) {
  checkOutputs();
  const std::int64_t number = MessageReader(message).number();
  const auto output = takeStaged(message);
  const auto role = message.choice<OutputRole>();
  bytesPublished_ += sizeOf(*output);
  keepingFault([&] { published_.emplace(number, output->publish(role)); });
  ++steps_;
}

void Grant::publishWhole(MessageReader& message) {
  checkOutputs();
  const InputFile& input = readInput(message);
  const OutputNaming naming = readNaming(message, input);
  const std::int64_t number = message.number();
  const auto role = message.choice<OutputRole>();
  const std::string_view content = message.text();
  if (number >= 0 || published_.contains(number)) throw OutsideGrant();
  if (++wholeCount_ + stagedCount_ > limits_.outputs) throw breachOf(Budget::outputs, name_);
  bytesPublished_ += std::ssize(content);
  keepingFault([&] {
    const auto output = context_.stage(input, naming);
    output->write(content);
    published_.emplace(number, output->publish(role));
  });
  ++steps_;
}

// What an unanswered message ran into is how the request ends; the worker is not to blame.
template <class Step>
void Grant::keepingFault(Step step) {
  try {
    step();
  } catch (const OperationError& error) {
    if (!fault_) fault_ = error;
  }
}

// Where each file is a unit, the driver counts; a worker's own units are no more than a sign of life then.
void Grant::noteState(MessageReader& message) {
  constexpr std::int64_t mostUnits = std::int64_t{1} << 52;
  const std::string status(message.text(longestText));
  const std::int64_t total = message.number(mostUnits);
  const std::int64_t completed = message.number(mostUnits);
  const std::int64_t reads = message.number(std::numeric_limits<std::int64_t>::max());
  if (completed < completed_) throw OutsideGrant();
  if (!status.empty() && status != status_) {
    status_ = status;
    context_.setStatus(status);
    ++steps_;
  }
  if (!type_.isPerFile()) {
    if (total != total_) context_.progress().setTotalUnitCount(total_ = total);
    if (completed > completed_) context_.progress().complete(completed - completed_);
  }
  if (completed > completed_ || reads != reads_) ++steps_;
  completed_ = completed;
  reads_ = reads;
}

// An error behind a full output is the budget's.
OperationError Grant::explained(OperationError error) const {
  return wasFull_ ? breachOf(Budget::bytesOutPerByteIn, name_) : error;
}

// A cancelled file ends its whole batch, so it takes a person to cancel.
void Grant::requireStop() const {
  if (!context_.stopToken().stop_requested()) throw OutsideGrant();
}

bool Grant::end(Ask kind, MessageReader& message) {
  switch (kind) {
    case Ask::finished: {
      const bool hasSummary = message.number(1) == 1;
      const std::string summary(message.text(longestText));
      if (fault_) {
        ending_ = explained(*fault_);
        return true;
      }
      if (type_.isPerFile() && result_.outputs.size() != 1) throw OutsideGrant();
      if (hasSummary) result_.summary = summary;
      ending_ = std::move(result_);
      return true;
    }
    case Ask::failed: {
      const OperationError error = readError(message);
      if (error.kind() == OperationError::Kind::cancelled) requireStop();
      ending_ = explained(error);
      return true;
    }
    case Ask::cancelled:
      requireStop();
      ending_ = CancellationError();
      return true;
    case Ask::fault: ending_ = std::runtime_error(std::string(message.text(longestText))); return true;
    default: return false;
  }
}

}  // namespace quirn::box
