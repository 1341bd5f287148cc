// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/unicode_escape_tool.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <optional>

#include "platform/unicode.h"
#include "workbench/hex.h"
#include "workbench/rewriting.h"
#include "workbench/tool_parts.h"
#include "workbench/unicode_escape.h"

namespace quirn {
namespace {

using platform::asciiAt;

constexpr std::string_view javaScriptStyle = "\\uXXXX (JS)";
constexpr std::string_view swiftStyle = "\\u{...} (Swift)";
constexpr std::string_view codePointStyle = "U+XXXX";

std::string escaped(std::string_view text, std::string_view style) {
  static constexpr ByteSet special = bytesWhere([](unsigned char byte) { return byte >= 0x80; });
  return rewritten(text, special, [style](std::string& out, std::string_view all, std::size_t at) {
    const auto [scalar, length] = platform::firstScalar(all.substr(at));
    const auto number = static_cast<std::uint32_t>(scalar);
    if (style == swiftStyle) {
      fmt::format_to(std::back_inserter(out), "\\u{{{:X}}}", number);
    } else if (style == codePointStyle) {
      fmt::format_to(std::back_inserter(out), "U+{:04X}", number);
    } else {
      appendUnicodeEscape(out, scalar);
    }
    return at + length;
  });
}

struct HexRun {
  std::optional<char32_t> scalar;  // nothing if there are no digits, or they are of no scalar
  std::size_t end = 0;
};

// All hex digits from `at` on.
HexRun hexRunAt(std::string_view text, std::size_t at) {
  constexpr std::uint64_t tooLarge = 0x110000;
  std::uint64_t value = 0;
  std::size_t end = at;
  for (int digit = 0; (digit = hexValue(asciiAt(text, end))) >= 0; ++end)
    value = std::min(value * 16 + static_cast<std::uint64_t>(digit), tooLarge);
  const auto scalar = static_cast<char32_t>(value);
  const bool isValid = end > at && platform::isScalar(scalar);
  return {isValid ? std::optional(scalar) : std::nullopt, end};
}

// "\u{…}" and "\u…", of which the two first characters were seen.
std::size_t appendBackslashForm(std::string& out, std::string_view text, std::size_t at) {
  if (asciiAt(text, at + 2) == '{') {
    const auto [scalar, end] = hexRunAt(text, at + 3);
    if (!scalar || asciiAt(text, end) != '}')
      throw TextToolError("Malformed \\u{…} escape — expected hex digits in braces.");
    platform::appendUtf8(out, *scalar);
    return end + 1;
  }
  const auto joined = joinedEscapeAt(text, at + 2);
  if (!joined) throw TextToolError("Malformed \\u escape — expected four hex digits.");
  platform::appendUtf8(out, joined->scalar);
  return joined->end;
}

std::size_t appendUnescaped(std::string& out, std::string_view text, std::size_t at) {
  const char first = asciiAt(text, at), second = asciiAt(text, at + 1);
  if (first == '\\' && second == 'u') return appendBackslashForm(out, text, at);
  if (first == 'U' && second == '+') {
    const auto [scalar, end] = hexRunAt(text, at + 2);
    if (scalar) {
      platform::appendUtf8(out, *scalar);
      return end;
    }
  }
  out += text[at];
  return at + 1;
}

std::string transform(std::string_view input, const TextToolOptions& options) {
  static constexpr ByteSet markers = bytesOf("\\U");
  return isMode(options, "Unescape") ? rewritten(input, markers, &appendUnescaped)
                                     : escaped(input, options.text("style", javaScriptStyle));
}

}  // namespace

const TextTool& unicodeEscapeTool() {
  static const TextTool tool{
      .id = "dev.unicode-escape",
      .name = "Unicode Escape/Unescape",
      .shortName = "unicode",
      .icon = "number",
      .aliases = {"unicode escape", "code point", "u+", "ascii escape", "escape unicode"},
      .blurb = "Escape non-ASCII characters to code points, or decode them back.",
      .inputPlaceholder = "Text to escape, or escaped code points to decode…",
      .controls = {modeControl("Escape", "Unescape"),
                   ChoiceControl{"style",
                                 "Style",
                                 {std::string(javaScriptStyle), std::string(swiftStyle), std::string(codePointStyle)},
                                 std::string(javaScriptStyle)}},
      .sampleInput = "café → ☕ → 𝟙",
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
