// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the tools for structured text share.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/json.h"
#include "workbench/text_tool.h"
#include "workbench/xml_reader.h"

namespace quirn {

// "1 match:" or "{count} matches:", and a blank line.
std::string matchHeading(std::size_t count);

// What the output of a tool may grow to: enough for every honest layout, and a bound for text that is
// made to explode.
std::size_t outputLimit(std::size_t inputSize);
[[noreturn]] void failForSize();

// As `parsedJson`, and the error as people read it: `message`, unless a limit was the reason.
platform::JsonValue jsonInput(std::string_view text, const std::string& message = "Invalid JSON.",
                              platform::JsonDuplicates duplicates = platform::JsonDuplicates::lastValueWins);
TextToolError asToolError(const platform::JsonError& error, const std::string& message);
TextToolError asToolError(const XmlError& error, const std::string& message);

}  // namespace quirn
