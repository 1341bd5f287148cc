// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/xml_to_json.h"

#include <map>

#include "platform/text.h"
#include "workbench/structured_support.h"
#include "workbench/xml_format.h"
#include "workbench/xml_reader.h"

namespace quirn {
namespace {

using platform::JsonArray;
using platform::JsonObject;
using platform::JsonValue;

// An element that is still open.
class Element {
 public:
  Element(std::string_view name, std::span<const XmlAttribute> attributes) : name_(name) {
    for (const XmlAttribute& attribute : attributes) {
      attributes_.emplace_back("@" + std::string(attribute.name), decodedXmlAttribute(attribute.value));
    }
  }

  const std::string& name() const { return name_; }
  void addText(std::string_view text) { text_ += text; }

  void addChild(const std::string& name, JsonValue value) {
    const auto [found, isNew] = positions_.try_emplace(name, children_.size());
    if (isNew) children_.emplace_back(name, JsonArray());
    children_[found->second].second.push_back(std::move(value));
  }

  JsonValue value() && {
    const std::string_view text = platform::trimmed(text_);
    if (attributes_.empty() && children_.empty()) return text;
    JsonObject object = std::move(attributes_);
    for (auto& [name, values] : children_) {
      object.emplace_back(name, values.size() == 1 ? std::move(values.front()) : JsonValue(std::move(values)));
    }
    if (!text.empty()) object.emplace_back("#text", text);
    return object;
  }

 private:
  std::string name_;
  JsonObject attributes_;
  std::vector<std::pair<std::string, JsonArray>> children_;
  std::map<std::string, std::size_t> positions_;  // of a name in `children_`
  std::string text_;
};

// Collects elements in a holder that stands for the document.
class Collector {
 public:
  explicit Collector(std::string_view text) : reader_(text) {}

  JsonValue document() {
    for (XmlToken token = reader_.next(); token != XmlToken::end; token = reader_.next()) take(token);
    return std::move(open_.front()).value();
  }

 private:
  void take(XmlToken token) {
    switch (token) {
      case XmlToken::startTag:
      case XmlToken::emptyTag: open_.emplace_back(reader_.name(), reader_.attributes()); break;
      case XmlToken::text: open_.back().addText(decodedXmlText(reader_.raw())); break;
      case XmlToken::cdata: open_.back().addText(characters(reader_.raw())); break;
      default: break;
    }
    if (token == XmlToken::emptyTag || token == XmlToken::endTag) close();
  }

  static std::string_view characters(std::string_view section) {
    section.remove_prefix(std::string_view("<![CDATA[").size());
    section.remove_suffix(std::string_view("]]>").size());
    return section;
  }

  void close() {
    Element element = std::move(open_.back());
    open_.pop_back();
    const std::string name = element.name();
    open_.back().addChild(name, std::move(element).value());
  }

  XmlReader reader_;
  std::vector<Element> open_ = {Element("", {})};
};

}  // namespace

JsonValue jsonFromXml(std::string_view text) {
  const std::string lines = withXmlLineEnds(platform::trimmed(text));
  return Collector(lines).document();
}

}  // namespace quirn
