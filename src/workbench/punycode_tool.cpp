// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/punycode_tool.h"

#include <fmt/format.h>

#include "core/input_file.h"
#include "platform/unicode.h"
#include "workbench/lines.h"
#include "workbench/punycode.h"
#include "workbench/tool_parts.h"

namespace quirn {
namespace {

constexpr std::string_view prefix = "xn--";

std::string encodedLabel(std::string_view label) {
  if (isAscii(label)) return std::string(label);
  try {
    return std::string(prefix) + punycodeEncoded(platform::lowercase(label));
  } catch (const PunycodeError&) {
    throw TextToolError(fmt::format("Punycode overflow while encoding \"{}\".", label));
  }
}

std::string sentence(PunycodeError::Fault fault, std::string_view label) {
  using enum PunycodeError::Fault;
  switch (fault) {
    case overflow: return fmt::format("Punycode overflow while decoding \"{}\".", label);
    case basicCodePoint: return fmt::format("Invalid basic code point in Punycode label \"{}\".", label);
    case digit: return fmt::format("Invalid digit in Punycode label \"{}\".", label);
    case codePoint: break;
  }
  return fmt::format("Punycode produced an invalid code point in \"{}\".", label);
}

std::string decodedLabel(std::string_view label) {
  if (lowerCased(label.substr(0, prefix.size())) != prefix) return std::string(label);
  try {
    return punycodeDecoded(label.substr(prefix.size()));
  } catch (const PunycodeError& error) {
    throw TextToolError(sentence(error.fault(), label));
  }
}

std::string transform(std::string_view input, const TextToolOptions& options) {
  const bool encodes = options.text("mode", "Encode").starts_with("Encode");
  return mappedPieces(platform::trimmed(input), '.', encodes ? &encodedLabel : &decodedLabel);
}

}  // namespace

const TextTool& punycodeTool() {
  static const TextTool tool{
      .id = "dev.punycode",
      .name = "Punycode (IDN)",
      .shortName = "punycode",
      .icon = "globe",
      .aliases = {"punycode", "idn", "idna", "xn--", "internationalized domain"},
      .blurb = "Encode internationalised domains to xn-- Punycode, or decode them back.",
      .controls = {modeControl("Encode (→ xn--)", "Decode (xn-- →)")},
      .sampleInput = "münchen.de",
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
