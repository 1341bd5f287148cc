// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Base64 and Base32 (RFC 4648).

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace quirn::platform {

enum class Base64Alphabet {
  standard,  // ends in "+/", padded with "="
  urlSafe,   // ends in "-_", not padded
};

std::string base64Encoded(std::string_view bytes, Base64Alphabet alphabet);

// Nothing for a character outside the alphabet, white space included, or for padding that is
// missing, wrong or not at the end. The URL-safe form may be padded or not, and may hold "+" and
// "/" too. Bits that no byte needs are not looked at.
std::optional<std::string> base64Decoded(std::string_view text, Base64Alphabet alphabet);

std::string base32Encoded(std::string_view bytes);

}  // namespace quirn::platform
