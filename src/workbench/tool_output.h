// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A tool's output as a file.

#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "core/operation_result.h"
#include "workbench/text_tool.h"

namespace quirn {

// Writes `text` into `folder`, which is made where it is missing. The file is called after the file
// that the input came from, else after the tool, and has the tool's extension; where that name is
// taken, " ({n})" is added, and nothing is ever replaced. On the disk and named when this returns.
// Throws TextToolError.
OutputFile saveToolOutput(const TextTool& tool, const std::optional<std::filesystem::path>& seed,
                          const std::filesystem::path& folder, std::string_view text);

}  // namespace quirn
