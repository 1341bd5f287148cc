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

// Appends the one to four bytes of a code point; of a surrogate, the three that it would have.
void appendUtf8(std::string& text, std::uint32_t codePoint);

// The same text with every ill-formed sequence replaced by U+FFFD.
std::string repairedUtf8(std::string_view bytes);

// Each byte of ISO 8859-1 is the code point of the same number.
std::string utf8FromLatin1(std::string_view bytes);

// The way back; characters beyond U+00FF become "?".
std::string latin1FromUtf8(std::string_view text);

// The same text without anything that could drive a terminal: control characters, which file names
// may hold, become escapes, and what is not UTF-8 becomes U+FFFD.
std::string displayText(std::string_view text);

// The longest beginning of `text`, at most `bytes` long, that cuts no character.
std::string_view utf8Prefix(std::string_view text, std::size_t bytes);

}  // namespace quirn::platform
