// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/markup_escape_tools.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

#include "platform/unicode.h"
#include "workbench/hex.h"
#include "workbench/rewriting.h"
#include "workbench/tool_parts.h"

namespace quirn {
namespace {

using platform::asciiAt;

// What an escape stands for, and how it is written.
using Entity = std::pair<std::string_view, std::string_view>;

constexpr std::array<Entity, 5> htmlEscapes{
    {{"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"\"", "&quot;"}, {"'", "&#39;"}}};
constexpr std::array<Entity, 5> xmlEscapes{
    {{"&", "&amp;"}, {"<", "&lt;"}, {">", "&gt;"}, {"\"", "&quot;"}, {"'", "&apos;"}}};
constexpr std::array<Entity, 7> htmlEntities{{{"<", "&lt;"},
                                              {">", "&gt;"},
                                              {"\"", "&quot;"},
                                              {"'", "&#39;"},
                                              {"'", "&apos;"},
                                              {"\u00A0", "&nbsp;"},
                                              {"&", "&amp;"}}};

constexpr ByteSet ampersand = bytesOf("&");

std::string escaped(std::string_view text, std::span<const Entity> escapes) {
  static constexpr ByteSet special = bytesOf("&<>\"'");
  return rewritten(text, special, [escapes](std::string& out, std::string_view all, std::size_t at) {
    for (const auto& [character, escape] : escapes) {
      if (all[at] == character.front()) out += escape;
    }
    return at + 1;
  });
}

// One pass does what a pass for each entity would, the ampersand's last: no entity's character can
// be part of another's name.
std::string namesUnescaped(std::string_view text, std::span<const Entity> entities) {
  return rewritten(text, ampersand, [entities](std::string& out, std::string_view all, std::size_t at) {
    for (const auto& [character, escape] : entities) {
      if (!all.substr(at).starts_with(escape)) continue;
      out += character;
      return at + escape.size();
    }
    out += '&';
    return at + 1;
  });
}

struct NumericReference {
  char32_t scalar = 0;
  std::size_t end = 0;
};

// The reference that begins with the "&" at `at`; nothing if it is none, or one to no character.
std::optional<NumericReference> numericReferenceAt(std::string_view text, std::size_t at) {
  if (asciiAt(text, at) != '&' || asciiAt(text, at + 1) != '#') return std::nullopt;
  std::size_t end = at + 2;
  const char mark = asciiAt(text, end);
  const int base = mark == 'x' || mark == 'X' ? 16 : 10;
  if (base == 16) ++end;
  const std::size_t firstDigit = end;
  std::uint64_t value = 0;
  for (;; ++end) {
    const int digit = hexValue(asciiAt(text, end));
    if (digit < 0 || digit >= base) break;
    value = value * static_cast<std::uint64_t>(base) + static_cast<std::uint64_t>(digit);
    if (value > 0x10FFFF) return std::nullopt;
  }
  const auto scalar = static_cast<char32_t>(value);
  if (end == firstDigit || asciiAt(text, end) != ';' || !platform::isScalar(scalar)) return std::nullopt;
  return NumericReference{scalar, end + 1};
}

std::string numbersUnescaped(std::string_view text) {
  return rewritten(text, ampersand, [](std::string& out, std::string_view all, std::size_t at) {
    const auto reference = numericReferenceAt(all, at);
    if (!reference) {
      out += '&';
      return at + 1;
    }
    platform::appendUtf8(out, reference->scalar);
    return reference->end;
  });
}

std::string transformHTML(std::string_view input, const TextToolOptions& options) {
  if (!isMode(options, "Unescape")) return escaped(input, htmlEscapes);
  if (input.find("&#") == std::string_view::npos) return namesUnescaped(input, htmlEntities);
  return namesUnescaped(numbersUnescaped(input), htmlEntities);
}

std::string transformXML(std::string_view input, const TextToolOptions& options) {
  return isMode(options, "Unescape") ? namesUnescaped(input, xmlEscapes) : escaped(input, xmlEscapes);
}

}  // namespace

const TextTool& htmlEscapeTool() {
  static const TextTool tool{
      .id = "dev.html-escape",
      .name = "HTML Escape/Unescape",
      .shortName = "html",
      .icon = "chevron.left.forwardslash.chevron.right",
      .aliases = {"html escape", "html unescape", "html entities", "encode html", "decode html"},
      .blurb = "Escape text for HTML, or decode entities back to characters.",
      .inputPlaceholder = "HTML or text to escape / unescape…",
      .controls = {modeControl("Escape", "Unescape")},
      .sampleInput = R"(<a href="x">Tom & Jerry</a>)",
      .transform = &transformHTML,
  };
  return tool;
}

const TextTool& xmlEscapeTool() {
  static const TextTool tool{
      .id = "dev.xml-escape",
      .name = "XML Escape/Unescape",
      .shortName = "xml",
      .icon = "chevron.left.forwardslash.chevron.right",
      .aliases = {"xml escape", "xml unescape", "xml entities", "encode xml", "decode xml"},
      .blurb = "Escape text for XML, or decode the five predefined entities back.",
      .inputPlaceholder = "XML or text to escape / unescape…",
      .controls = {modeControl("Escape", "Unescape")},
      .sampleInput = R"(<node attr="a&b">x</node>)",
      .transform = &transformXML,
  };
  return tool;
}

}  // namespace quirn
