// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the tools for structured text share.

#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/json.h"
#include "workbench/text_tool.h"
#include "workbench/xml_reader.h"

namespace quirn {

// Without the white space and line ends of Unicode at both ends.
std::string_view trimmed(std::string_view text);

// Nothing if a percent sign begins no escape, or if what comes out is not UTF-8.
std::optional<std::string> percentDecoded(std::string_view text);
// All but the unreserved characters of RFC 3986, 2.3.
std::string percentEncoded(std::string_view text);

// RFC 4648, 4, with padding and nothing else between. Nothing if it is something else.
std::optional<std::string> base64Decoded(std::string_view text);

// "2023-11-14T22:13:20Z"; nothing outside of the years 1 to 9999.
std::optional<std::string> isoUtc(std::int64_t secondsSinceEpoch);
// "3 days ago", "1 hour from now", "now".
std::string relativeText(double secondsFromNow);

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
