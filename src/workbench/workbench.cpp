// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/workbench.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "core/operation_error.h"
#include "workbench/tool_input.h"
#include "workbench/tool_options.h"
#include "workbench/tool_output.h"
#include "workbench/tool_run.h"

namespace quirn {
namespace {

std::string lineCount(const std::string& text) {
  return fmt::format("{} lines", std::ranges::count(text, '\n') + 1);
}

}  // namespace

Workbench::Workbench(const TextTool& tool, std::optional<Path> seedURL, std::optional<Path> outputDirectory)
    : tool_(tool),
      seedURL_(std::move(seedURL)),
      outputDirectory_(std::move(outputDirectory)),
      options_(defaultOptions(tool)) {
  try {
    if (seedURL_) input_ = toolInputOf(tool_, *seedURL_);
    regenerate();
  } catch (const OperationError& error) {
    errorMessage_ = error.userMessage();
  }
}

void Workbench::setInput(std::string text) {
  input_ = std::move(text);
  regenerate();
}

void Workbench::setOption(std::string_view key, std::string value) {
  options_.values[std::string(key)] = std::move(value);
  options_ = clamped(tool_, std::move(options_));
  regenerate();
}

void Workbench::regenerate() {
  ToolRun run = runTool(tool_, input_, options_);
  output_ = std::move(run.output);
  errorMessage_ = std::move(run.errorMessage);
}

std::string Workbench::inputLineCount() const {
  return lineCount(input_);
}

std::string Workbench::outputLineCount() const {
  return lineCount(output_);
}

OutputFile Workbench::save(const Path& offeredFolder) const {
  const Path besideSeed = seedURL_ ? seedURL_->parent_path() : offeredFolder;
  return saveToolOutput(tool_, seedURL_, outputDirectory_.value_or(besideSeed), output_);
}

}  // namespace quirn
