// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/hex_bytes_tool.h"

#include <algorithm>

#include "workbench/hex.h"
#include "workbench/tool_parts.h"

namespace quirn {
namespace {

std::string hexOf(std::string_view bytes, bool spaced) {
  std::string text((spaced ? 3 : 2) * bytes.size(), ' ');
  char* out = text.data();
  for (const char byte : bytes) {
    const auto value = static_cast<unsigned char>(byte);
    *out++ = lowerHexDigits[value >> 4];
    *out++ = lowerHexDigits[value & 15];
    if (spaced) ++out;
  }
  if (spaced && !text.empty()) text.pop_back();
  return text;
}

// The digits without blanks, line feeds, tabs and the "0x" before a group of them.
std::string digitsOf(std::string_view text) {
  std::string digits;
  digits.reserve(text.size());
  bool isGroupStart = true;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const char character = text[at];
    if (character == ' ' || character == '\n' || character == '\t') {
      isGroupStart = true;
      continue;
    }
    const char next = at + 1 < text.size() ? text[at + 1] : '\0';
    if (isGroupStart && character == '0' && (next == 'x' || next == 'X')) {
      ++at;
    } else {
      digits += character;
    }
    isGroupStart = false;
  }
  return digits;
}

std::size_t characterCount(std::string_view text) {
  return static_cast<std::size_t>(
      std::ranges::count_if(text, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }));
}

std::string bytesOf(std::string_view digits) {
  if (characterCount(digits) % 2 != 0) throw TextToolError("Hex input must have an even number of digits.");
  std::string bytes;
  bytes.reserve(digits.size() / 2);
  for (std::size_t at = 0; at < digits.size(); at += 2) {
    const auto byte = hexByteAt(digits, at);
    if (!byte) throw TextToolError("Invalid hex character — only 0-9 and a-f are allowed.");
    bytes += *byte;
  }
  return bytes;
}

std::string transform(std::string_view input, const TextToolOptions& options) {
  if (!isMode(options, "Hex→Text")) return hexOf(input, options.text("sep", "none") == "space");
  return textOf(bytesOf(digitsOf(input)), "Decoded bytes are not valid UTF-8 text.");
}

}  // namespace

const TextTool& hexBytesTool() {
  static const TextTool tool{
      .id = "dev.hex-bytes",
      .name = "Text ↔ Hex Bytes",
      .shortName = "hexbytes",
      .icon = "textformat.abc.dottedunderline",
      .aliases = {"hex", "bytes", "hexadecimal", "text to hex", "hex to text"},
      .blurb = "Convert text to its UTF-8 hex bytes, or decode hex bytes back to text.",
      .takesBytes = true,
      .controls = {modeControl("Text→Hex", "Hex→Text"), ChoiceControl{"sep", "Spacing", {"none", "space"}, "none"}},
      .sampleInput = "Quirn ☕",
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
