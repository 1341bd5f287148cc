// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The command line that does what the window is about to do, to be copied into a terminal or a script.

#pragma once

#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/operation_type.h"
#include "workbench/text_tool.h"

namespace quirn {

// The word as the POSIX shell reads it back: unchanged where nothing in it is special, else in quotes.
std::string shellQuoted(std::string_view word);

// `quirn run OPERATION …` with the settings that differ from their defaults. A hidden text is never
// part of it. `config` is of this operation, or null for its defaults.
std::string runCommandText(const OperationType& type, const OperationConfig* config, std::span<const InputFile> inputs,
                           const std::optional<std::filesystem::path>& outputDirectory);

// `quirn tool TOOL …`; the text comes from `seed`, or without one through a pipe.
std::string toolCommandText(const TextTool& tool, const TextToolOptions& options,
                            const std::optional<std::filesystem::path>& seed);

}  // namespace quirn
