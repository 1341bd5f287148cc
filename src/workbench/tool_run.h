// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// One run of a text tool, with whatever goes wrong in it as a sentence.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "workbench/text_tool.h"

namespace quirn {

struct ToolRun {
  std::string output;  // empty where there is a message
  std::optional<std::string> errorMessage;
};

// Blocks. Throws nothing.
ToolRun runTool(const TextTool& tool, std::string_view input, const TextToolOptions& options);

}  // namespace quirn
