// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// UTF-8 (RFC 3629) where bytes of other origin must become text.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quirn::platform {

bool isUtf8(std::string_view bytes);

// The length of the well-formed sequence that begins `bytes`, 0 if none does.
std::size_t utf8SequenceLength(std::string_view bytes);

// The same text with every ill-formed sequence replaced by U+FFFD.
std::string repairedUtf8(std::string_view bytes);

// Each byte of ISO 8859-1 is the code point of the same number.
std::string utf8FromLatin1(std::string_view bytes);

// The way back; characters beyond U+00FF become "?".
std::string latin1FromUtf8(std::string_view text);

// The same text without anything that could drive a terminal: control characters, which file names
// may hold, become escapes, and what is not UTF-8 becomes U+FFFD.
std::string displayText(std::string_view text);

// What UTF-16 with a byte-order mark says; lone surrogates and an odd last byte become U+FFFD.
std::string utf8FromUtf16(std::string_view bytes);
bool hasUtf16Mark(std::string_view bytes);

struct Scalar {
  char32_t value = 0;
  std::size_t length = 0;  // in bytes
};

// The first scalar of a text that is not empty; U+FFFD and one byte where it is ill-formed.
Scalar firstScalar(std::string_view text);

// A surrogate or what lies beyond U+10FFFF is none.
bool isScalar(char32_t value);

// Appends a scalar; of a surrogate, the three bytes that it would have.
void appendUtf8(std::string& text, char32_t scalar);

// The bytes of the white space or line end that begins the text, 0 if none does.
std::size_t leadingSpaceLength(std::string_view text);

// The text without white space and line ends, those of Unicode included, at both ends.
std::string_view trimmed(std::string_view text);

// The longest beginning of `text`, at most `bytes` long, that cuts no character.
std::string_view utf8Prefix(std::string_view text, std::size_t bytes);

}  // namespace quirn::platform
