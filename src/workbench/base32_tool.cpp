// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/base32_tool.h"

#include <fmt/format.h>

#include "platform/base64.h"
#include "platform/unicode.h"
#include "workbench/tool_parts.h"

namespace quirn {
namespace {

int digitValue(char digit) {
  if (digit >= 'A' && digit <= 'Z') return digit - 'A';
  if (digit >= 'a' && digit <= 'z') return digit - 'a';
  if (digit >= '2' && digit <= '7') return digit - '2' + 26;
  return -1;
}

bool isSkipped(char character) {
  return std::string_view("= \n\r\t").find(character) != std::string_view::npos;
}

[[noreturn]] void refuse(std::string_view text) {
  const std::string_view character = text.substr(0, platform::firstScalar(text).length);
  throw TextToolError(fmt::format("Invalid Base32 character \"{}\" — only A-Z and 2-7 are allowed.",
                                  platform::repairedUtf8(character)));
}

std::string decoded(std::string_view text) {
  std::string bytes;
  bytes.reserve(text.size() / 8 * 5 + 5);
  std::uint32_t bits = 0;
  int count = 0;
  for (std::size_t at = 0; at < text.size(); ++at) {
    if (isSkipped(text[at])) continue;
    const int value = digitValue(text[at]);
    if (value < 0) refuse(text.substr(at));
    bits = bits << 5 | static_cast<std::uint32_t>(value);
    count += 5;
    if (count < 8) continue;
    count -= 8;
    bytes += static_cast<char>(bits >> count);
  }
  return bytes;
}

std::string transform(std::string_view input, const TextToolOptions& options) {
  if (!isMode(options, "Decode")) return platform::base32Encoded(input);
  // Some letters beyond ASCII have digits for capitals.
  return textOf(isAscii(input) ? decoded(input) : decoded(platform::uppercase(input)),
                "Decoded bytes are not valid UTF-8 text.");
}

}  // namespace

const TextTool& base32Tool() {
  static const TextTool tool{
      .id = "dev.base32",
      .name = "Base32",
      .shortName = "base32",
      .icon = "textformat.123",
      .aliases = {"base32", "rfc 4648", "b32", "encode", "decode"},
      .blurb = "Encode text to RFC 4648 Base32, or decode Base32 back to text.",
      .takesBytes = true,
      .controls = {modeControl("Encode", "Decode")},
      .sampleInput = "Quirn",
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
