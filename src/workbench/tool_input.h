// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a tool works on, from a file or from bytes that came through a pipe.

#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "workbench/text_tool.h"

namespace quirn {

// The most bytes that a tool is given: they and a result several times as long are in memory.
inline constexpr std::int64_t mostInputBytes = 1 << 30;

// UTF-16 with a byte-order mark becomes UTF-8, and what is not UTF-8 becomes U+FFFD, unless the
// tool takes bytes as they are.
std::string toolInput(const TextTool& tool, std::string bytes);

// The same of a file. Throws OperationError.
std::string toolInputOf(const TextTool& tool, const std::filesystem::path& file);

}  // namespace quirn
