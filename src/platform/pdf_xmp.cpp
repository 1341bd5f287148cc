// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_xmp.h"

#include <fmt/format.h>

#include <array>
#include <string_view>

#include "platform/text.h"

namespace quirn::platform {
namespace {

constexpr std::array<std::string_view, 5> properties{"dc:title", "dc:creator", "dc:description", "dc:subject",
                                                     "pdf:Keywords"};
constexpr std::string_view blanks = " \t\r\n";

bool endsName(char character) {
  return character == '>' || character == '/' || blanks.find(character) != std::string_view::npos;
}

// The length of the element that begins at `begin`; 0 if it doesn't end.
std::size_t elementLength(std::string_view xml, std::size_t begin, std::string_view name) {
  const std::size_t tagEnd = xml.find('>', begin);
  if (tagEnd == std::string_view::npos) return 0;
  if (xml[tagEnd - 1] == '/') return tagEnd + 1 - begin;
  const std::string closing = fmt::format("</{}>", name);
  const std::size_t close = xml.find(closing, tagEnd);
  return close == std::string_view::npos ? 0 : close + closing.size() - begin;
}

void removeElements(std::string& xml, std::string_view name) {
  const std::string opening = fmt::format("<{}", name);
  for (std::size_t at = 0; (at = xml.find(opening, at)) != std::string::npos;) {
    const std::size_t behind = at + opening.size();
    const bool isIt = behind < xml.size() && endsName(xml[behind]);
    const std::size_t length = isIt ? elementLength(xml, at, name) : 0;
    length == 0 ? static_cast<void>(at = behind) : static_cast<void>(xml.erase(at, length));
  }
}

// As properties of simple values are often written.
void removeAttributes(std::string& xml, std::string_view name) {
  const std::string opening = fmt::format("{}=", name);
  for (std::size_t at = 0; (at = xml.find(opening, at)) != std::string::npos;) {
    const std::size_t quote = at + opening.size();
    const bool isIt = at > 0 && blanks.find(xml[at - 1]) != std::string_view::npos && quote < xml.size();
    const std::size_t end = isIt ? xml.find(xml[quote], quote + 1) : std::string::npos;
    end == std::string::npos ? static_cast<void>(at = quote) : static_cast<void>(xml.erase(at, end + 1 - at));
  }
}

std::string escaped(std::string_view text) {
  std::string result;
  for (const char character : repairedUtf8(text)) {
    switch (character) {
      case '&': result += "&amp;"; break;
      case '<': result += "&lt;"; break;
      case '>': result += "&gt;"; break;
      default:  // XML has no other control characters.
        if (static_cast<unsigned char>(character) >= 0x20 || blanks.find(character) != std::string_view::npos)
          result += character;
    }
  }
  return result;
}

std::string translated(std::string_view name, const std::string& text) {
  if (text.empty()) return {};
  return fmt::format("<{0}><rdf:Alt><rdf:li xml:lang=\"x-default\">{1}</rdf:li></rdf:Alt></{0}>", name, escaped(text));
}

std::string listed(std::string_view name, std::string_view container, const std::vector<std::string>& texts) {
  std::string items;
  for (const std::string& text : texts) {
    if (!text.empty()) items += fmt::format("<rdf:li>{}</rdf:li>", escaped(text));
  }
  if (items.empty()) return {};
  return fmt::format("<{0}><{1}>{2}</{1}></{0}>", name, container, items);
}

std::string description(const PDFAttributes& attributes) {
  const std::string keywords = escaped(fmt::format("{}", fmt::join(attributes.keywords, ", ")));
  return "<rdf:Description rdf:about=\"\" xmlns:dc=\"http://purl.org/dc/elements/1.1/\" "
         "xmlns:pdf=\"http://ns.adobe.com/pdf/1.3/\">" +
         translated("dc:title", attributes.title) + listed("dc:creator", "rdf:Seq", {attributes.author}) +
         translated("dc:description", attributes.subject) + listed("dc:subject", "rdf:Bag", attributes.keywords) +
         (keywords.empty() ? "" : fmt::format("<pdf:Keywords>{}</pdf:Keywords>", keywords)) + "</rdf:Description>";
}

}  // namespace

std::optional<std::string> xmpWith(std::string packet, const PDFAttributes& attributes) {
  for (const std::string_view property : properties) {
    removeElements(packet, property);
    removeAttributes(packet, property);
  }
  const std::size_t end = packet.rfind("</rdf:RDF>");
  if (end == std::string::npos || !isUtf8(packet)) return std::nullopt;
  return packet.insert(end, description(attributes));
}

}  // namespace quirn::platform
