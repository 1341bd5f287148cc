// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/structured_support.h"

#include <fmt/format.h>

#include "platform/text.h"

namespace quirn {
namespace {

// How often the text may be longer than its input, and what is allowed whatever the input.
constexpr std::size_t outputRatio = 16;
constexpr std::size_t outputFloor = std::size_t{256} << 20;

}  // namespace

std::string matchHeading(std::size_t count) {
  return fmt::format("{} match{}:\n\n", count, count == 1 ? "" : "es");
}

std::size_t outputLimit(std::size_t inputSize) {
  return outputFloor + outputRatio * inputSize;
}

void failForSize() {
  throw TextToolError("The output would be too large to be shown.");
}

platform::JsonValue jsonInput(std::string_view text, const std::string& message, platform::JsonDuplicates duplicates) {
  try {
    return platform::parsedJson(platform::trimmed(text), duplicates);
  } catch (const platform::JsonError& error) {
    throw asToolError(error, message);
  }
}

TextToolError asToolError(const platform::JsonError& error, const std::string& message) {
  using Reason = platform::JsonError::Reason;
  if (error.reason() == Reason::outputTooLarge) failForSize();
  if (error.reason() == Reason::malformed) return TextToolError(message);
  return TextToolError(fmt::format("This JSON is nested more than {} levels deep.", platform::jsonDepthLimit));
}

TextToolError asToolError(const XmlError& error, const std::string& message) {
  if (error.reason() == XmlError::Reason::outputTooLarge) failForSize();
  if (error.reason() == XmlError::Reason::malformed) return TextToolError(message);
  return TextToolError(fmt::format("This XML is nested more than {} levels deep.", xmlDepthLimit));
}

}  // namespace quirn
