// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>

#include "platform/text.h"
#include "workbench/xml_characters.h"
#include "workbench/xml_reader.h"

namespace quirn {
namespace {

struct Entity {
  std::string_view name;
  char character;
};
constexpr std::array<Entity, 5> predefined = {{{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};

// `reference` is what stands between the ampersand and the semicolon.
void appendReferred(std::string& out, std::string_view reference) {
  const auto* const found = std::ranges::find(predefined, reference, &Entity::name);
  if (found != predefined.end()) {
    out += found->character;
  } else if (reference.starts_with('#')) {
    platform::appendUtf8(out, referredXmlCharacter(reference.substr(1)));
  } else {
    out.append("&").append(reference).append(";");
  }
}

// How many bytes at the beginning are printable ASCII: eight at a time, each in its lane of a number.
std::size_t printableLength(std::string_view text) {
  constexpr std::uint64_t highBits = 0x8080808080808080;
  constexpr std::uint64_t blanks = 0x2020202020202020;
  std::size_t at = 0;
  for (; text.size() - at >= sizeof(std::uint64_t); at += sizeof(std::uint64_t)) {
    std::uint64_t lanes = 0;
    std::memcpy(&lanes, text.data() + at, sizeof lanes);
    // With the high bits set, taking away a blank clears that of a lane below it.
    if ((lanes & highBits) != 0 || (((lanes | highBits) - blanks) & highBits) != highBits) break;
  }
  return at;
}

bool isAllowedAscii(char byte) {
  const auto code = static_cast<unsigned char>(byte);
  return code < 0x80 && (code >= 0x20 || byte == '\n' || byte == '\t' || byte == '\r');
}

// A literal line end of Windows would be read as a line feed, and in an attribute every one as a blank.
std::string_view reference(char character, bool isAttribute) {
  switch (character) {
    case '&': return "&amp;";
    case '<': return "&lt;";
    case '>': return isAttribute ? "" : "&gt;";
    case '"': return isAttribute ? "&quot;" : "";
    case '\r': return "&#13;";
    case '\n': return isAttribute ? "&#10;" : "";
    case '\t': return isAttribute ? "&#9;" : "";
    default: return "";
  }
}

std::string escaped(std::string_view text, bool isAttribute) {
  std::string out;
  for (const char character : text) {
    const std::string_view escape = reference(character, isAttribute);
    out += escape.empty() ? std::string_view(&character, 1) : escape;
  }
  return out;
}

}  // namespace

std::string escapedXmlText(std::string_view text) {
  return escaped(text, false);
}

std::string escapedXmlAttribute(std::string_view text) {
  return escaped(text, true);
}

std::string decodedXmlText(std::string_view raw) {
  std::string text;
  for (std::size_t at = raw.find('&'); at != std::string_view::npos; at = raw.find('&')) {
    const std::size_t end = raw.find(';', at);
    text += raw.substr(0, at);
    appendReferred(text, raw.substr(at + 1, end - at - 1));
    raw.remove_prefix(end + 1);
  }
  return text += raw;
}

std::string decodedXmlAttribute(std::string_view raw) {
  std::string literal(raw);
  std::ranges::replace_if(literal, [](char byte) { return byte == '\n' || byte == '\t' || byte == '\r'; }, ' ');
  return decodedXmlText(literal);
}

bool isXmlName(std::string_view text) {
  return !text.empty() && xmlNameLength(text) == text.size();
}

bool isXmlBlank(std::string_view text) {
  return std::ranges::all_of(text,
                             [](char byte) { return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r'; });
}

std::string_view firstIllegalXmlCharacter(std::string_view text) {
  std::size_t at = 0;
  while (at < text.size()) {
    at += printableLength(text.substr(at));
    while (at < text.size() && isAllowedAscii(text[at])) ++at;
    if (at == text.size()) break;
    const XmlCharacter character = firstXmlCharacter(text.substr(at));
    if (character.length == 0 || !isXmlCharacter(character.codePoint)) return text.substr(at);
    at += character.length;
  }
  return {};
}

}  // namespace quirn
