// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "hostile/hostile_operations.h"

#include <fmt/format.h>

#include <sstream>
#include <stdexcept>
#include <thread>

#include "hostile/attacks.h"
#include "platform/file_descriptor.h"

namespace quirn::hostile {
namespace {

OperationInfo infoOf(std::string_view identifier) {
  return {.operationID = identifier,
          .displayName = "Hostile",
          .iconName = "ant",
          .category = OperationCategory::utility,
          .aliases = {},
          .about = "A test."};
}

constexpr std::int64_t mostBytes = 1 << 20;

void makeEntry(const std::string& line, StagedFolder& folder) {
  constexpr std::chrono::sys_seconds date{std::chrono::seconds(1'000'000'000)};
  std::istringstream words(line);
  std::string kind, name, rest;
  words >> kind >> name >> rest;
  if (kind == "folder") folder.makeFolder(name);
  const std::string content = kind == "large" ? std::string(std::stoul(rest), 'x') : rest;
  if (kind == "file" || kind == "large") folder.write(name, std::as_bytes(std::span(content)), date);
  if (kind == "abandon") {
    platform::writeAll(folder.begin(name, date), std::as_bytes(std::span(rest)));
    folder.abandonFile();
  }
  if (kind == "link" && !folder.link(name, rest)) folder.write("no " + name, {}, {});
  if (kind == "drop") throw OperationError::unsupportedInput("Dropped.");
}

}  // namespace

const OperationInfo& DecoderOperation::info() {
  static const OperationInfo info = infoOf("hostile.decoder");
  return info;
}

const AcceptedInputs& DecoderOperation::accepts() {
  static const AcceptedInputs accepts;
  return accepts;
}

OutputFile DecoderOperation::processFile(const InputFile& input, OperationContext& context) const {
  context.setStatus(fmt::format("Decoding {}…", input.fileName()));
  std::istringstream words(context.open(input).readAll(mostBytes));
  std::string attack, argument;
  words >> attack >> argument;
  if (attack != "honest" && !attemptAttack(attack, argument, input, context))
    throw OperationError::unsupportedInput(attack + " was refused.");
  return writeTextOutput(context, input, "decoded", "txt", attack + " " + argument, "Couldn't write.");
}

Panel EchoConfig::panel() {
  return {choice<&EchoConfig::colour>("Colour", {{Colour::red, "Red"}, {Colour::green, "Green"}}),
          toggle<&EchoConfig::loud>("Loud"), stepper<&EchoConfig::count>("Count", {.legal = {1, 100}}),
          slider<&EchoConfig::ratio>("Ratio", {.legal = {0, 1}}), field<&EchoConfig::text>("Text")};
}

const OperationInfo& EchoOperation::info() {
  static const OperationInfo info = infoOf("hostile.echo");
  return info;
}

const AcceptedInputs& EchoOperation::accepts() {
  static const AcceptedInputs accepts;
  return accepts;
}

OutputFile EchoOperation::processFileConfigured(const InputFile& input, const EchoConfig& config,
                                                OperationContext& context) const {
  const std::string text = fmt::format("{} {} {} {} {}", static_cast<int>(config.colour), config.loud, config.count,
                                       config.ratio, config.text);
  return writeTextOutput(context, input, "echo", "txt", text, "Couldn't write.");
}

const OperationInfo& MergeOperation::info() {
  static const OperationInfo info = infoOf("hostile.merge");
  return info;
}

const AcceptedInputs& MergeOperation::accepts() {
  static const AcceptedInputs accepts{.folders = AcceptedInputs::Folders::allowed, .matches = {}};
  return accepts;
}

OperationResult MergeOperation::run(std::span<const InputFile> inputs, OperationContext& context) const {
  std::vector<InputFile> files;
  for (const InputFile& input : inputs) {
    const std::vector<InputFile> beneath = input.isDirectory ? context.enumerate(input) : std::vector{input};
    files.insert(files.end(), beneath.begin(), beneath.end());
  }
  context.progress().setTotalUnitCount(std::ssize(files));
  OperationResult result;
  const auto output = context.stage(inputs.front(), "merged", "txt");
  for (const InputFile& file : files) {
    context.setStatus(fmt::format("Merging {}…", file.fileName()));
    const std::string content = context.open(file).readAll(mostBytes);
    if (content == "fault") throw std::runtime_error("a fault of ours");
    while (content == "stop") {
      context.checkCancellation();
      std::this_thread::yield();
    }
    if (content == "bad") {
      result.failures.push_back({platform::Uuid::random(), file.fileName(), "It is bad."});
    } else {
      output->write(content);
    }
    context.progress().complete(1);
  }
  result.outputs.push_back(output->publish(OutputRole::primary));
  context.publishStaged();
  result.outputs.front() = context.published(result.outputs.front());
  result.summary = fmt::format("Merged {} files.", files.size());
  return result;
}

const OperationInfo& UnpackOperation::info() {
  static const OperationInfo info = infoOf("hostile.unpack");
  return info;
}

const AcceptedInputs& UnpackOperation::accepts() {
  static const AcceptedInputs accepts;
  return accepts;
}

OutputFile UnpackOperation::processFile(const InputFile& input, OperationContext& context) const {
  std::istringstream lines(context.open(input).readAll(mostBytes));
  const auto folder = context.stageFolder(input, {input.stem(), "unpacked", ""});
  try {
    for (std::string line; std::getline(lines, line);) makeEntry(line, *folder);
    folder->settle();
  } catch (const EntryOutside& outside) {
    folder->publish(OutputRole::primary);
    throw OperationError::unsupportedInput("Outside: " + outside.name());
  }
  return folder->publish(OutputRole::primary);
}

}  // namespace quirn::hostile
