// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/xml_characters.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "platform/text.h"

namespace quirn {
namespace {

struct Range {
  std::uint32_t first;
  std::uint32_t last;
};

constexpr std::array<Range, 16> nameStarts = {{{':', ':'},
                                               {'A', 'Z'},
                                               {'_', '_'},
                                               {'a', 'z'},
                                               {0xC0, 0xD6},
                                               {0xD8, 0xF6},
                                               {0xF8, 0x2FF},
                                               {0x370, 0x37D},
                                               {0x37F, 0x1FFF},
                                               {0x200C, 0x200D},
                                               {0x2070, 0x218F},
                                               {0x2C00, 0x2FEF},
                                               {0x3001, 0xD7FF},
                                               {0xF900, 0xFDCF},
                                               {0xFDF0, 0xFFFD},
                                               {0x10000, 0xEFFFF}}};
constexpr std::array<Range, 5> nameContinuations = {
    {{'-', '.'}, {'0', '9'}, {0xB7, 0xB7}, {0x300, 0x36F}, {0x203F, 0x2040}}};

template <std::size_t count>
constexpr bool lies(std::uint32_t codePoint, const std::array<Range, count>& ranges) {
  return std::ranges::any_of(ranges,
                             [codePoint](Range range) { return codePoint >= range.first && codePoint <= range.last; });
}

constexpr std::array<bool, 256> asciiNameCharacters = [] {
  std::array<bool, 256> characters{};
  for (std::uint32_t code = 0; code < 128; ++code) {
    characters[code] = lies(code, nameStarts) || lies(code, nameContinuations);
  }
  return characters;
}();

bool isAsciiNameCharacter(char byte) {
  return asciiNameCharacters[static_cast<unsigned char>(byte)];
}

}  // namespace

XmlCharacter firstXmlCharacter(std::string_view text) {
  const std::size_t length = platform::utf8SequenceLength(text);
  if (length == 0) return {};
  const auto lead = static_cast<unsigned char>(text.front());
  std::uint32_t codePoint = length == 1 ? lead : lead & (0x7FU >> length);
  for (std::size_t i = 1; i < length; ++i) {
    codePoint = codePoint << 6 | (static_cast<unsigned char>(text[i]) & 0x3FU);
  }
  return {codePoint, length};
}

bool isXmlNameStart(std::uint32_t codePoint) {
  if ((codePoint | 0x20U) >= 'a' && (codePoint | 0x20U) <= 'z') return true;
  return lies(codePoint, nameStarts);
}

bool isXmlNameCharacter(std::uint32_t codePoint) {
  return isXmlNameStart(codePoint) || lies(codePoint, nameContinuations);
}

bool isXmlCharacter(std::uint32_t codePoint) {
  if (codePoint < 0x20) return codePoint == '\t' || codePoint == '\n' || codePoint == '\r';
  const bool isSurrogate = codePoint >= 0xD800 && codePoint < 0xE000;
  return !isSurrogate && codePoint != 0xFFFE && codePoint != 0xFFFF && codePoint <= 0x10FFFF;
}

std::size_t xmlNameLength(std::string_view text) {
  std::size_t end = 0;
  for (;;) {
    while (end < text.size() && isAsciiNameCharacter(text[end])) ++end;
    if (end == text.size() || static_cast<unsigned char>(text[end]) < 0x80) break;
    const XmlCharacter character = firstXmlCharacter(text.substr(end));
    if (character.length == 0 || !isXmlNameCharacter(character.codePoint)) break;
    end += character.length;
  }
  if (end == 0) return 0;
  const auto first = static_cast<unsigned char>(text.front());
  return isXmlNameStart(first < 0x80 ? first : firstXmlCharacter(text).codePoint) ? end : 0;
}

std::uint32_t referredXmlCharacter(std::string_view digits) {
  const bool isHexadecimal = digits.starts_with('x');
  if (isHexadecimal) digits.remove_prefix(1);
  std::uint32_t codePoint = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, codePoint, isHexadecimal ? 16 : 10);
  return error == std::errc() && stop == end && isXmlCharacter(codePoint) ? codePoint : 0;
}

}  // namespace quirn
