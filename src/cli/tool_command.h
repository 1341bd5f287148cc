// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// "quirn tool": one text tool on a file, on standard input or on nothing.

#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cli/exit_status.h"
#include "workbench/text_tool.h"

namespace quirn::cli {

struct ToolArguments {
  std::string tool;  // its identifier or its short name
  std::optional<std::filesystem::path> file;
  std::vector<std::string> settings;  // "key=value"
  std::optional<std::filesystem::path> out;
  bool save = false;
  bool json = false;
  bool raw = false;
  bool sample = false;
};

// Throws UsageError for a name of none, or a short name of several, which it then lists.
const TextTool& toolNamed(const std::string& name);

// Throws UsageError and OutputLost.
int toolCommand(const ToolArguments& arguments);

}  // namespace quirn::cli
