// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The character classes of XML 1.0, fifth edition.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace quirn {

struct XmlCharacter {
  std::uint32_t codePoint = 0;
  std::size_t length = 0;  // 0 if the bytes are no UTF-8
};

XmlCharacter firstXmlCharacter(std::string_view text);

bool isXmlNameStart(std::uint32_t codePoint);
bool isXmlNameCharacter(std::uint32_t codePoint);
bool isXmlCharacter(std::uint32_t codePoint);

// The length of the name at the beginning, 0 if none is there.
std::size_t xmlNameLength(std::string_view text);

// What the digits of a reference &#…; state, without its marks: "x1F600" or "10". 0 if that is no
// character.
std::uint32_t referredXmlCharacter(std::string_view digits);

}  // namespace quirn
