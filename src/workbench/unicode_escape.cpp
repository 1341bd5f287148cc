// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/unicode_escape.h"

#include "platform/text.h"
#include "platform/unicode.h"
#include "workbench/hex.h"

namespace quirn {
namespace {

using platform::asciiAt;

constexpr char32_t replacement = 0xFFFD;
constexpr std::size_t digitCount = 4;

void appendUnit(std::string& text, char32_t unit) {
  text += "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) text += upperHexDigits[unit >> shift & 15];
}

bool isHighSurrogate(char32_t unit) {
  return (unit & 0xFFFFFC00) == 0xD800;
}

bool isLowSurrogate(char32_t unit) {
  return (unit & 0xFFFFFC00) == 0xDC00;
}

}  // namespace

void appendUnicodeEscape(std::string& text, char32_t scalar) {
  if (scalar < 0x10000) {
    appendUnit(text, scalar);
    return;
  }
  appendUnit(text, 0xD800 + ((scalar - 0x10000) >> 10));
  appendUnit(text, 0xDC00 + (scalar & 0x3FF));
}

std::optional<char32_t> fourHexDigitsAt(std::string_view text, std::size_t at) {
  char32_t value = 0;
  for (std::size_t i = 0; i < digitCount; ++i) {
    const int digit = hexValue(asciiAt(text, at + i));
    if (digit < 0) return std::nullopt;
    value = value << 4 | static_cast<char32_t>(digit);
  }
  return value;
}

std::optional<JoinedEscape> joinedEscapeAt(std::string_view text, std::size_t at) {
  const auto unit = fourHexDigitsAt(text, at);
  if (!unit) return std::nullopt;
  const std::size_t end = at + digitCount;
  if (platform::isScalar(*unit)) return JoinedEscape{*unit, end};
  const bool pairFollows = asciiAt(text, end) == '\\' && asciiAt(text, end + 1) == 'u';
  const auto low = isHighSurrogate(*unit) && pairFollows ? fourHexDigitsAt(text, end + 2) : std::optional<char32_t>();
  if (!low || !isLowSurrogate(*low)) return JoinedEscape{replacement, end};
  const char32_t scalar = 0x10000 + ((*unit & 0x3FF) << 10 | (*low & 0x3FF));
  return JoinedEscape{scalar, end + 2 + digitCount};
}

}  // namespace quirn
