// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the Unicode character database says of characters. All texts are UTF-8; what is ill-formed
// in one counts as U+FFFD. The language of the person plays no part: the same text gives the same
// result everywhere.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quirn::platform {

// Letters, the marks upon them, and numbers of all scripts.
bool isAlphanumeric(char32_t scalar);
bool isUppercase(char32_t scalar);
bool isLowercase(char32_t scalar);

std::string lowercase(std::string_view text);
std::string uppercase(std::string_view text);

// Characters decomposed and the marks dropped: "cafe" of "café". Letters that have no
// decomposition, such as "ß" and "ø", stay.
std::string withoutDiacritics(std::string_view text);

// Whether what a person sees as one character ends, and another begins, at the byte `at`, as far as
// an ASCII character on either side is concerned (UAX #29: a combining mark, a joiner or a
// prepended mark belongs to its neighbour, a line feed to the carriage return before it).
bool isCharacterBoundary(std::string_view text, std::size_t at);

// The ASCII character at `at` where a person sees just that; NUL at the end of the text, for any
// other character, and where a neighbour belongs to it: "n" with an accent behind it is no "n".
char asciiAt(std::string_view text, std::size_t at);

}  // namespace quirn::platform
