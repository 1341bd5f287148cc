// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/backslash_tool.h"

#include "platform/unicode.h"
#include "workbench/hex.h"
#include "workbench/rewriting.h"
#include "workbench/tool_parts.h"

namespace quirn {
namespace {

using platform::asciiAt;

std::size_t appendEscaped(std::string& out, std::string_view text, std::size_t at) {
  switch (text[at]) {
    case '\t': out += "\\t"; break;
    case '\n': out += "\\n"; break;
    case '\r': out += "\\r"; break;
    case '\\': out += "\\\\"; break;
    default: appendHexEscape(out, "\\x", text[at]); break;
  }
  return at + 1;
}

char32_t hexEscapeAt(std::string_view text, std::size_t at) {
  const int high = hexValue(asciiAt(text, at)), low = hexValue(asciiAt(text, at + 1));
  if (high < 0 || low < 0) throw TextToolError("Malformed \\x escape — expected two hex digits.");
  return static_cast<char32_t>(high * 16 + low);
}

std::size_t appendUnescaped(std::string& out, std::string_view text, std::size_t at) {
  // A backslash at the end stays, and so does one that is part of another character.
  if (asciiAt(text, at) == '\0' || at + 1 == text.size()) {
    out += '\\';
    return at + 1;
  }
  switch (asciiAt(text, at + 1)) {
    case 'n': out += '\n'; break;
    case 't': out += '\t'; break;
    case 'r': out += '\r'; break;
    case 'x':
    case 'X': platform::appendUtf8(out, hexEscapeAt(text, at + 2)); return at + 4;
    default: out += text[at + 1]; break;
  }
  return at + 2;
}

std::string transform(std::string_view input, const TextToolOptions& options) {
  static constexpr ByteSet special =
      bytesWhere([](unsigned char byte) { return byte < 0x20 || byte == '\\' || byte == 0x7F; });
  static constexpr ByteSet backslash = bytesOf("\\");
  return isMode(options, "Unescape") ? rewritten(input, backslash, &appendUnescaped)
                                     : rewritten(input, special, &appendEscaped);
}

}  // namespace

const TextTool& backslashTool() {
  static const TextTool tool{
      .id = "dev.backslash",
      .name = "Backslash Escape/Unescape",
      .shortName = "backslash",
      .icon = "textformat",
      .aliases = {"backslash", "escape control", "c escape", "whitespace escape"},
      .blurb = R"(Escape control characters to \n \t \xHH, or decode them back.)",
      .inputPlaceholder = "Text to escape, or escaped text to decode…",
      .controls = {modeControl("Escape", "Unescape")},
      .sampleInput = "tab\there\nnewline",
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
