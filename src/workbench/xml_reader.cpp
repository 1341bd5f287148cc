// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/xml_reader.h"

#include <fmt/format.h>

#include <algorithm>

#include "platform/text.h"
#include "workbench/xml_characters.h"

namespace quirn {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view blanks = " \t\n\r";

bool isBlank(char byte) {
  return byte == ' ' || byte == '\n' || byte == '\t' || byte == '\r';
}

bool isPredefinedEntity(std::string_view name) {
  return name == "lt" || name == "gt" || name == "amp" || name == "quot" || name == "apos";
}

bool isDeclaration(std::string_view keyword) {
  return keyword == "ELEMENT" || keyword == "ATTLIST" || keyword == "ENTITY" || keyword == "NOTATION";
}

bool isKnownVersion(std::string_view version) {
  return version.size() > 2 && version.starts_with("1.") &&
         version.find_first_not_of("0123456789", 2) == std::string_view::npos;
}

bool isWord(std::string_view text) {
  const auto isAllowed = [](char byte) {
    const char lower = static_cast<char>(byte | 0x20);
    return (lower >= 'a' && lower <= 'z') || (byte >= '0' && byte <= '9') || byte == '.' || byte == '_' || byte == '-';
  };
  return !text.empty() && std::ranges::all_of(text, isAllowed);
}

// Long values would make a message that nobody reads.
std::string shown(std::string_view name) {
  const std::string_view beginning = platform::utf8Prefix(name, 60);
  return beginning.size() < name.size() ? std::string(beginning) + "…" : std::string(name);
}

std::string position(std::string_view before) {
  const auto line = std::ranges::count(before, '\n') + 1;
  const std::string_view row = before.substr(before.rfind('\n') + 1);
  const auto column =
      std::ranges::count_if(row, [](char byte) { return (static_cast<unsigned char>(byte) & 0xC0) != 0x80; }) + 1;
  return fmt::format("line {}, column {}", line, column);
}

bool repeats(std::span<const XmlAttribute> attributes, std::size_t index) {
  return std::ranges::any_of(attributes.first(index),
                             [&](const XmlAttribute& earlier) { return earlier.name == attributes[index].name; });
}

}  // namespace

XmlReader::XmlReader(std::string_view text) : text_(text) {
  if (text.starts_with(byteOrderMark)) first_ = byteOrderMark.size();
  at_ = first_;
  if (const std::string_view illegal = firstIllegalXmlCharacter(text); !illegal.empty()) {
    failAt(offsetOf(illegal), "a character that XML doesn’t allow.");
  }
}

void XmlReader::rewind() {
  at_ = first_;
  open_.clear();
  entities_.clear();
  hasRoot_ = hasDocumentType_ = mayDeclareElsewhere_ = false;
  isChecked_ = true;
}

std::size_t XmlReader::offsetOf(std::string_view part) const {
  return static_cast<std::size_t>(part.data() - text_.data());
}

void XmlReader::fail(std::string_view why, XmlError::Reason reason) const {
  failAt(at_, why, reason);
}

void XmlReader::failAt(std::size_t offset, std::string_view why, XmlError::Reason reason) const {
  const std::string_view before = text_.substr(first_, std::max(offset, first_) - first_);
  throw XmlError(reason, fmt::format("{}: {}", position(before), why));
}

XmlToken XmlReader::next() {
  start_ = at_;
  if (at_ == text_.size()) {
    if (!open_.empty()) fail(fmt::format("the element “{}” is never closed.", shown(open_.back())));
    if (!hasRoot_) fail("there is no root element.");
    return XmlToken::end;
  }
  if (peek() != '<') return scanText();
  switch (peek(1)) {
    case '!': return scanBang();
    case '?': return scanInstruction();
    case '/': return scanEndTag();
    default: return scanStartTag();
  }
}

bool XmlReader::skipBlanks() {
  const std::size_t before = at_;
  while (at_ < text_.size() && isBlank(text_[at_])) ++at_;
  return at_ > before;
}

void XmlReader::expect(std::string_view words) {
  if (!startsWith(words)) fail(fmt::format("“{}” is missing.", words));
  at_ += words.size();
}

void XmlReader::skipPast(std::string_view mark, std::string_view what) {
  const std::size_t found = text_.find(mark, at_);
  if (found == std::string_view::npos) failAt(start_, fmt::format("this {} never ends.", what));
  at_ = found + mark.size();
}

std::string_view XmlReader::scanName() {
  const std::size_t length = xmlNameLength(text_.substr(at_));
  if (length == 0) fail("a name is missing.");
  at_ += length;
  return text_.substr(at_ - length, length);
}

std::string_view XmlReader::scanQuoted() {
  const char quote = peek();
  if (quote != '"' && quote != '\'') fail("a value in quotes is missing.");
  const std::size_t begin = ++at_;
  const std::size_t end = text_.find(quote, begin);
  if (end == std::string_view::npos) failAt(begin - 1, "this quote is never closed.");
  at_ = end + 1;
  return text_.substr(begin, end - begin);
}

XmlToken XmlReader::scanText() {
  at_ = std::min(text_.find('<', at_), text_.size());
  const std::string_view text = raw();
  if (isChecked_) return XmlToken::text;
  if (open_.empty()) {
    if (!isXmlBlank(text)) {
      failAt(start_ + text.find_first_not_of(blanks), "text stands outside the root element.");
    }
    return XmlToken::text;
  }
  if (const std::size_t mark = text.find("]]>"); mark != std::string_view::npos) {
    failAt(start_ + mark, "“]]>” may not stand in text.");
  }
  checkReferences(text);
  return XmlToken::text;
}

XmlToken XmlReader::scanBang() {
  if (startsWith("<!--")) return scanComment();
  if (startsWith("<![CDATA[") && !open_.empty()) {
    skipPast("]]>", "CDATA section");
    return XmlToken::cdata;
  }
  if (startsWith("<!DOCTYPE")) return scanDocumentType();
  fail("“<!” begins nothing that may stand here.");
}

XmlToken XmlReader::scanComment() {
  at_ += 4;
  skipPast("--", "comment");
  if (peek() != '>') failAt(at_ - 2, "“--” may not stand in a comment.");
  ++at_;
  return XmlToken::comment;
}

XmlToken XmlReader::scanInstruction() {
  at_ += 2;
  name_ = scanName();
  if (name_ == "xml" && start_ == first_) return scanDeclaration();
  const auto isLetter = [](char a, char b) { return (a | 0x20) == b; };
  if (std::ranges::equal(name_, std::string_view("xml"), isLetter)) {
    failAt(start_, "the XML declaration may stand at the very beginning alone.");
  }
  if (!startsWith("?>") && !isBlank(peek())) fail("“?>” is missing.");
  skipPast("?>", "processing instruction");
  return XmlToken::instruction;
}

XmlToken XmlReader::scanDeclaration() {
  scanAttributes();
  expect("?>");
  const std::vector<std::string_view> order = {"version", "encoding", "standalone"};
  auto allowed = order.begin();
  for (const XmlAttribute& attribute : attributes_) {
    const auto found = std::find(allowed, order.end(), attribute.name);
    if (found == order.end()) failAt(offsetOf(attribute.name), "the XML declaration is not in order.");
    allowed = found + 1;
    if (!isWord(attribute.value)) failAt(offsetOf(attribute.value), "the XML declaration is not in order.");
  }
  if (attributes_.empty() || attributes_[0].name != "version" || !isKnownVersion(attributes_[0].value)) {
    failAt(start_, "the XML declaration states no version that is known.");
  }
  return XmlToken::declaration;
}

XmlToken XmlReader::scanDocumentType() {
  if (hasRoot_ || hasDocumentType_) fail("a document type may not stand here.");
  hasDocumentType_ = true;
  at_ += std::string_view("<!DOCTYPE").size();
  if (!skipBlanks()) fail("a blank is missing.");
  name_ = scanName();
  skipBlanks();
  scanExternalIdentifier();
  if (peek() == '[') scanSubset();
  skipBlanks();
  expect(">");
  return XmlToken::documentType;
}

void XmlReader::scanExternalIdentifier() {
  const bool isPublic = startsWith("PUBLIC");
  if (!isPublic && !startsWith("SYSTEM")) return;
  mayDeclareElsewhere_ = true;
  at_ += 6;
  for (int literal = isPublic ? 0 : 1; literal < 2; ++literal) {
    skipBlanks();
    scanQuoted();
  }
  skipBlanks();
}

void XmlReader::scanSubset() {
  ++at_;
  for (skipBlanks(); peek() != ']'; skipBlanks()) {
    if (startsWith("<!--")) {
      scanComment();
    } else if (startsWith("<?")) {
      skipPast("?>", "processing instruction");
    } else if (peek() == '%') {
      mayDeclareElsewhere_ = true;
      ++at_;
      scanName();
      expect(";");
    } else {
      scanMarkupDeclaration();
    }
  }
  ++at_;
}

void XmlReader::scanMarkupDeclaration() {
  expect("<!");
  const std::string_view keyword = scanName();
  if (!isDeclaration(keyword) || !skipBlanks()) failAt(offsetOf(keyword), "this is no declaration.");
  if (keyword == "ENTITY" && peek() != '%') entities_.insert(scanName());
  while (peek() != '>') {
    if (peek() == '"' || peek() == '\'') {
      scanQuoted();
    } else if (at_ == text_.size() || peek() == '<' || peek() == ']') {
      failAt(start_, "this document type never ends.");
    } else {
      ++at_;
    }
  }
  ++at_;
}

XmlToken XmlReader::scanStartTag() {
  if (open_.empty() && hasRoot_) fail("there is a second root element.");
  ++at_;
  name_ = scanName();
  scanAttributes();
  const bool isEmpty = peek() == '/';
  if (isEmpty) ++at_;
  if (peek() != '>') fail("“>” is missing.");
  ++at_;
  hasRoot_ = true;
  if (isEmpty) return XmlToken::emptyTag;
  enter();
  return XmlToken::startTag;
}

void XmlReader::enter() {
  if (open_.size() == xmlDepthLimit) {
    failAt(start_, fmt::format("elements are nested more than {} levels deep.", xmlDepthLimit),
           XmlError::Reason::tooDeep);
  }
  open_.push_back(name_);
}

void XmlReader::scanAttributes() {
  attributes_.clear();
  while (skipBlanks() && peek() != '>' && peek() != '/' && peek() != '?') scanAttribute();
  checkAttributeNames();
}

void XmlReader::scanAttribute() {
  const std::string_view name = scanName();
  skipBlanks();
  if (peek() != '=') fail("“=” is missing.");
  ++at_;
  skipBlanks();
  const char quote = peek();
  const std::string_view value = scanQuoted();
  attributes_.push_back({name, value, quote});
  if (isChecked_) return;
  if (const std::size_t bracket = value.find('<'); bracket != std::string_view::npos) {
    failAt(offsetOf(value) + bracket, "“<” may not stand in the value of an attribute.");
  }
  checkReferences(value);
}

void XmlReader::checkAttributeNames() const {
  if (isChecked_ || attributes_.size() < 2) return;
  std::set<std::string_view> names;
  const bool isLong = attributes_.size() > 16;
  for (std::size_t i = 0; i < attributes_.size(); ++i) {
    const std::string_view name = attributes_[i].name;
    if (isLong ? !names.insert(name).second : repeats(attributes_, i)) {
      failAt(offsetOf(name), fmt::format("the attribute “{}” is there twice.", shown(name)));
    }
  }
}

XmlToken XmlReader::scanEndTag() {
  at_ += 2;
  if (!open_.empty() && startsWith(open_.back()) && peek(open_.back().size()) == '>') {
    name_ = open_.back();
    at_ += name_.size() + 1;
    open_.pop_back();
    return XmlToken::endTag;
  }
  name_ = scanName();
  if (open_.empty()) failAt(start_, fmt::format("“</{}>” closes nothing.", shown(name_)));
  if (open_.back() != name_) {
    failAt(start_, fmt::format("“</{}>” stands where “</{}>” is due.", shown(name_), shown(open_.back())));
  }
  skipBlanks();
  if (peek() != '>') fail("“>” is missing.");
  ++at_;
  open_.pop_back();
  return XmlToken::endTag;
}

void XmlReader::checkReferences(std::string_view text) const {
  for (std::size_t at = text.find('&'); at != std::string_view::npos; at = text.find('&', at + 1)) {
    const std::string_view rest = text.substr(at + 1);
    const bool isNumber = rest.starts_with('#');
    const std::size_t length =
        isNumber ? std::min(rest.find_first_not_of("x0123456789abcdefABCDEF", 1), rest.size()) : xmlNameLength(rest);
    if (length == 0 || !rest.substr(length).starts_with(';')) {
      failAt(offsetOf(rest) - 1, "“&” begins no reference; write “&amp;”.");
    }
    checkReference(rest.substr(0, length));
  }
}

void XmlReader::checkReference(std::string_view name) const {
  if (name.starts_with('#')) {
    if (referredXmlCharacter(name.substr(1)) == 0) {
      failAt(offsetOf(name) - 1, fmt::format("“&{};” is no character that XML allows.", shown(name)));
    }
  } else if (!isPredefinedEntity(name) && !mayDeclareElsewhere_ && !entities_.contains(name)) {
    failAt(offsetOf(name) - 1, fmt::format("the entity “&{};” is not declared.", shown(name)));
  }
}

}  // namespace quirn
