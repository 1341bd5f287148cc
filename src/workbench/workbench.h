// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The workbench without its window: the state of one tool at work, recomputed at once whenever the
// input or an option changes. Belongs to the interface thread.

#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "core/operation_result.h"
#include "workbench/text_tool.h"

namespace quirn {

class Workbench {
 public:
  using Path = std::filesystem::path;

  // `tool` outlives this object. The text of the seed becomes the input; a seed that can't be read
  // shows as the error message.
  explicit Workbench(const TextTool& tool, std::optional<Path> seedURL = std::nullopt,
                     std::optional<Path> outputDirectory = std::nullopt);

  const TextTool& tool() const { return tool_; }
  const std::string& input() const { return input_; }
  const TextToolOptions& options() const { return options_; }
  const std::string& output() const { return output_; }
  // Takes the place of the output, which is then empty.
  const std::optional<std::string>& errorMessage() const { return errorMessage_; }

  void setInput(std::string text);
  void clearInput() { setInput(""); }
  void loadSample() { setInput(tool_.sampleInput); }
  // A number is brought into its stepper's range.
  void setOption(std::string_view key, std::string value);
  // Runs the tool again: new output from a generator.
  void regenerate();

  // "3 lines"
  std::string inputLineCount() const;
  std::string outputLineCount() const;

  // The output as a file in the chosen folder, else beside the seed, else in `offeredFolder`.
  // Throws TextToolError.
  OutputFile save(const Path& offeredFolder) const;

 private:
  const TextTool& tool_;
  std::optional<Path> seedURL_;
  std::optional<Path> outputDirectory_;
  std::string input_;
  TextToolOptions options_;
  std::string output_;
  std::optional<std::string> errorMessage_;
};

}  // namespace quirn
