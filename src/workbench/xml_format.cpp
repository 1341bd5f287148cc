// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/xml_format.h"

#include <algorithm>
#include <optional>
#include <ranges>

#include "platform/text_sink.h"

namespace quirn {
namespace {

bool preservesSpace(std::span<const XmlAttribute> attributes) {
  return std::ranges::any_of(attributes, [](const XmlAttribute& attribute) {
    return attribute.name == "xml:space" && attribute.value == "preserve";
  });
}

class Outliner {
 public:
  explicit Outliner(XmlReader& reader) : reader_(reader) {}

  XmlOutline outline() {
    for (XmlToken token = reader_.next(); token != XmlToken::end; token = reader_.next()) take(token);
    if (keepsBlanks_) outline_.rootChildren += blankRuns_;
    return std::move(outline_);
  }

 private:
  void take(XmlToken token);
  void open();
  void close();
  void takeText(bool isBlank);
  void endRun();

  XmlReader& reader_;
  XmlOutline outline_;
  std::vector<std::size_t> open_;  // indices of start tags
  bool isInRun_ = false;           // of text in the root element
  bool isRunBlank_ = true;
  std::size_t blankRuns_ = 0;
  bool keepsBlanks_ = false;
};

void Outliner::take(XmlToken token) {
  switch (token) {
    case XmlToken::text: return takeText(isXmlBlank(reader_.raw()));
    case XmlToken::cdata: return takeText(false);
    case XmlToken::endTag: return close();
    case XmlToken::startTag:
    case XmlToken::emptyTag: break;
    default:
      endRun();
      if (open_.size() == 1) ++outline_.rootChildren;
      return;
  }
  endRun();
  if (open_.empty()) outline_.rootName = reader_.name();
  if (open_.size() == 1) ++outline_.rootChildren;
  if (token == XmlToken::startTag) open();
}

void Outliner::open() {
  open_.push_back(outline_.keepsContent.size());
  outline_.keepsContent.push_back(preservesSpace(reader_.attributes()));
}

void Outliner::close() {
  endRun();
  if (open_.size() == 1) keepsBlanks_ = outline_.keepsContent[open_.back()];
  open_.pop_back();
}

void Outliner::takeText(bool isBlank) {
  if (open_.empty()) return;
  if (!isBlank) outline_.keepsContent[open_.back()] = true;
  if (open_.size() > 1) return;
  isInRun_ = true;
  isRunBlank_ = isRunBlank_ && isBlank;
}

void Outliner::endRun() {
  if (!isInRun_ || open_.size() > 1) return;
  ++(isRunBlank_ ? blankRuns_ : outline_.rootChildren);
  isInRun_ = false;
  isRunBlank_ = true;
}

bool isUtf8Name(std::string_view encoding) {
  const auto matches = [encoding](std::string_view name) {
    return std::ranges::equal(encoding, name, [](char a, char b) { return (a | 0x20) == (b | 0x20); });
  };
  return matches("utf-8") || matches("us-ascii");
}

class Formatter {
 public:
  Formatter(XmlReader& reader, const XmlOutline& outline, XmlLayout layout, std::string& out)
      : reader_(reader), outline_(outline), layout_(layout), sink_(out) {}

  void write(XmlToken token);
  void finish() { sink_.flush(); }
  std::size_t size() const { return sink_.size(); }

 private:
  void writeText();
  void writeTag(std::string_view end);
  void writeStartTag();
  void writeEndTag();
  void writeDeclaration();
  void writeAttribute(std::string_view name, std::string_view value, char quote);
  // Where something that is not text begins, `depth` levels inside.
  void beginLine(std::size_t depth);

  XmlReader& reader_;
  const XmlOutline& outline_;
  XmlLayout layout_;
  platform::TextSink sink_;
  std::size_t startTags_ = 0;
  std::size_t keptDepth_ = 0;    // of the outermost element whose content is kept; 0 outside of any
  bool isAfterStart_ = false;    // nothing but blanks since a start tag
  std::string_view leafBlanks_;  // those blanks, which an element without other content keeps
};

void Formatter::write(XmlToken token) {
  switch (token) {
    case XmlToken::text: return writeText();
    case XmlToken::cdata: sink_.put(reader_.raw()); return;
    case XmlToken::startTag: return writeStartTag();
    case XmlToken::endTag: return writeEndTag();
    case XmlToken::emptyTag: beginLine(reader_.depth()); return writeTag("/>");
    case XmlToken::declaration: return writeDeclaration();
    default: beginLine(reader_.depth()); sink_.put(reader_.raw());
  }
}

void Formatter::beginLine(std::size_t depth) {
  isAfterStart_ = false;
  leafBlanks_ = {};
  if (keptDepth_ > 0 || layout_ == XmlLayout::compact || sink_.size() == 0) return;
  sink_.put('\n');
  sink_.fill(2 * depth, ' ');
}

void Formatter::writeText() {
  if (keptDepth_ > 0) {
    sink_.put(reader_.raw());
  } else if (isAfterStart_) {
    leafBlanks_ = reader_.raw();
  }
}

void Formatter::writeTag(std::string_view end) {
  sink_.put('<');
  sink_.put(reader_.name());
  for (const XmlAttribute& attribute : reader_.attributes()) {
    writeAttribute(attribute.name, attribute.value, attribute.quote);
  }
  sink_.put(end);
}

void Formatter::writeAttribute(std::string_view name, std::string_view value, char quote) {
  const char mark = value.find('"') == std::string_view::npos ? '"' : quote;
  sink_.put(' ');
  sink_.put(name);
  sink_.put('=');
  sink_.put(mark);
  sink_.put(value);
  sink_.put(mark);
}

void Formatter::writeStartTag() {
  beginLine(reader_.depth() - 1);
  writeTag(">");
  isAfterStart_ = true;
  const bool keepsContent = outline_.keepsContent[startTags_++];
  if (keepsContent && keptDepth_ == 0) keptDepth_ = reader_.depth();
}

void Formatter::writeEndTag() {
  const bool endsKept = keptDepth_ == reader_.depth() + 1;
  if (isAfterStart_) {
    sink_.put(leafBlanks_);
  } else if (!endsKept) {
    beginLine(reader_.depth());
  }
  if (endsKept) keptDepth_ = 0;
  isAfterStart_ = false;
  leafBlanks_ = {};
  sink_.put("</");
  sink_.put(reader_.name());
  sink_.put('>');
}

// The text is UTF-8 by now, whatever its file was in.
void Formatter::writeDeclaration() {
  sink_.put(std::string_view("<?xml"));
  for (const XmlAttribute& attribute : reader_.attributes()) {
    const bool isStale = attribute.name == "encoding" && !isUtf8Name(attribute.value);
    writeAttribute(attribute.name, isStale ? "UTF-8" : attribute.value, attribute.quote);
  }
  sink_.put("?>");
}

}  // namespace

XmlOutline xmlOutline(XmlReader& reader) {
  return Outliner(reader).outline();
}

std::string withXmlLineEnds(std::string_view text) {
  std::string out;
  out.reserve(text.size());
  for (std::size_t at = text.find('\r'); at != std::string_view::npos; at = text.find('\r')) {
    out += text.substr(0, at);
    out += '\n';
    text.remove_prefix(at + (text.substr(at).starts_with("\r\n") ? 2 : 1));
  }
  return out += text;
}

std::string formattedXml(std::string_view text, XmlLayout layout, std::size_t limit) {
  if (text.find('\r') != std::string_view::npos) return formattedXml(withXmlLineEnds(text), layout, limit);
  XmlReader reader(text);
  const XmlOutline outline = xmlOutline(reader);
  reader.rewind();
  std::string out;
  // Pages that are reserved and stay unused cost nothing; growing would hold the text twice.
  out.reserve(layout == XmlLayout::pretty ? 2 * text.size() : text.size());
  Formatter formatter(reader, outline, layout, out);
  for (XmlToken token = reader.next(); token != XmlToken::end; token = reader.next()) {
    formatter.write(token);
    if (formatter.size() > limit) throw XmlError(XmlError::Reason::outputTooLarge, "");
  }
  formatter.finish();
  return out;
}

}  // namespace quirn
