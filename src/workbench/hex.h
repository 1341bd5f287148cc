// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Hex digits, read and written.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace quirn {

inline constexpr std::string_view lowerHexDigits = "0123456789abcdef";
inline constexpr std::string_view upperHexDigits = "0123456789ABCDEF";

// 0 to 15; -1 for what is no hex digit.
constexpr int hexValue(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  return -1;
}

// Appends "%HH", "\xHH", "=HH" and their like: the prefix, then two upper-case digits.
inline void appendHexEscape(std::string& text, std::string_view prefix, char byte) {
  const auto value = static_cast<unsigned char>(byte);
  text += prefix;
  text += upperHexDigits[value >> 4];
  text += upperHexDigits[value & 15];
}

// The byte of the two digits at `at`; nothing if they are not both there.
constexpr std::optional<char> hexByteAt(std::string_view text, std::size_t at) {
  if (at >= text.size() || text.size() - at < 2) return std::nullopt;
  const int high = hexValue(text[at]), low = hexValue(text[at + 1]);
  if (high < 0 || low < 0) return std::nullopt;
  return static_cast<char>(high * 16 + low);
}

}  // namespace quirn
