// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// "\uXXXX", the escape that JavaScript, JSON and their relatives share: four hex digits, a
// surrogate pair for what lies beyond U+FFFF.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace quirn {

// Appends one escape, or the two of a pair.
void appendUnicodeEscape(std::string& text, char32_t scalar);

// The number that the four hex digits at `at` give; nothing where they are not all there.
std::optional<char32_t> fourHexDigitsAt(std::string_view text, std::size_t at);

struct JoinedEscape {
  char32_t scalar = 0;
  std::size_t end = 0;  // where the text goes on
};

// Reads what follows the "\u" of an escape: `at` is where its digits begin. A high surrogate takes
// the escape of a low one right behind it along; a surrogate by itself gives U+FFFD. Nothing where
// four digits are not there.
std::optional<JoinedEscape> joinedEscapeAt(std::string_view text, std::size_t at);

}  // namespace quirn
