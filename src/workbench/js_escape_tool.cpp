// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/js_escape_tool.h"

#include "platform/unicode.h"
#include "workbench/rewriting.h"
#include "workbench/tool_parts.h"
#include "workbench/unicode_escape.h"

namespace quirn {
namespace {

// The second character of the short escape, NUL where there is none.
char shortEscape(char character) {
  switch (character) {
    case '\b': return 'b';
    case '\t': return 't';
    case '\n': return 'n';
    case '\f': return 'f';
    case '\r': return 'r';
    case '"':
    case '\\': return character;
    default: return '\0';
  }
}

char meaningOf(char escape) {
  switch (escape) {
    case 'n': return '\n';
    case 'r': return '\r';
    case 't': return '\t';
    case 'b': return '\b';
    case 'f': return '\f';
    default: return escape;
  }
}

std::size_t appendEscaped(std::string& out, std::string_view text, std::size_t at) {
  const auto [scalar, length] = platform::firstScalar(text.substr(at));
  const char escape = shortEscape(text[at]);
  if (escape != '\0') {
    out += '\\';
    out += escape;
  } else if (scalar < 0x20 || scalar == 0x2028 || scalar == 0x2029) {
    appendUnicodeEscape(out, scalar);
  } else {
    out += text.substr(at, length);
  }
  return at + length;
}

std::size_t appendUnescaped(std::string& out, std::string_view text, std::size_t at) {
  // A backslash at the end stays, and so does one that is part of another character.
  if (platform::asciiAt(text, at) == '\0' || at + 1 == text.size()) {
    out += '\\';
    return at + 1;
  }
  const char escape = platform::asciiAt(text, at + 1);
  if (escape == 'u') {
    const auto joined = joinedEscapeAt(text, at + 2);
    if (!joined) throw TextToolError("Malformed \\u escape — expected four hex digits.");
    platform::appendUtf8(out, joined->scalar);
    return joined->end;
  }
  out += escape == '\0' ? text[at + 1] : meaningOf(escape);
  return at + 2;
}

std::string transform(std::string_view input, const TextToolOptions& options) {
  // 0xE2 begins U+2028 and U+2029, which end a line of a script.
  static constexpr ByteSet special =
      bytesWhere([](unsigned char byte) { return byte < 0x20 || byte == '"' || byte == '\\' || byte == 0xE2; });
  static constexpr ByteSet backslash = bytesOf("\\");
  return isMode(options, "Unescape") ? rewritten(input, backslash, &appendUnescaped)
                                     : rewritten(input, special, &appendEscaped);
}

}  // namespace

const TextTool& jsEscapeTool() {
  static const TextTool tool{
      .id = "dev.js-escape",
      .name = "JS String Escape/Unescape",
      .shortName = "js",
      .icon = "curlybraces",
      .aliases = {"js escape", "javascript string", "json string", "escape string", "unescape string"},
      .blurb = "Escape text into a JavaScript/JSON string literal, or decode one.",
      .inputPlaceholder = "Text to escape, or an escaped string body…",
      .controls = {modeControl("Escape", "Unescape")},
      .sampleInput = "Line1\nTab\there \"quoted\"",
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
