// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_runs.h"

#include "support/process.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

const OperationType& typeOf(const std::string& operationID) {
  return *catalog().byID(operationID);
}

Ended runProgram(const std::string& program, std::vector<std::string> arguments) {
  return tests::run({.arguments = std::move(arguments), .program = fs::path("/usr/bin") / program});
}

}  // namespace

Ran PDFRuns::run(const std::string& operationID, const std::vector<fs::path>& files, const Settings& settings) const {
  const OperationType& type = typeOf(operationID);
  const std::vector<InputFile> inputs = takeIn(files).files;
  if (!type.isConfigurable()) return runOperation(type, inputs, contextIn());
  const auto config = type.defaultConfig();
  for (const auto& [key, value] : settings) type.configPanel(*config).set(*config, key, value);
  return runOperation(type, inputs, contextIn(), config.get());
}

std::unique_ptr<OperationConfig> PDFRuns::configurationFor(const std::string& operationID, const fs::path& file) {
  return configurationOf(typeOf(operationID), {inputAt(file)});
}

std::string outcomeOf(const Ran& ran) {
  if (ran.error) return ran.error->userMessage();
  if (!ran.result) return "fault: " + ran.fault;
  std::vector<std::string> names;
  for (const OutputFile& output : ran.result->outputs) names.push_back(output.url.filename().string());
  for (const FileFailure& failure : ran.result->failures) names.push_back(failure.fileName + ": " + failure.message);
  return fmt::format("{}", fmt::join(names, ", "));
}

std::string printed(const std::string& program, std::vector<std::string> arguments) {
  const Ended ended = runProgram(program, std::move(arguments));
  return ended.status == 0 ? ended.output : ended.error;
}

std::string complaintsAbout(const fs::path& file, const std::string& password) {
  const Ended ended = runProgram("qpdf", {"--check", "--password=" + password, file.string()});
  return ended.status == 0 ? "" : ended.output + ended.error;
}

std::string wordsOf(const fs::path& file) {
  std::string words;
  for (const char character : printed("pdftotext", {file.string(), "-"})) {
    const bool isBlank = character == '\n' || character == ' ';
    if (character == '\f') {
      words += '|';
    } else if (!isBlank) {
      words += character;
    } else if (!words.empty() && words.back() != ' ' && words.back() != '|') {
      words += ' ';
    }
  }
  return words;
}

}  // namespace quirn::tests
