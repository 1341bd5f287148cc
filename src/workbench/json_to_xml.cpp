// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>

#include "platform/text.h"
#include "workbench/text_tool.h"
#include "workbench/xml_reader.h"
#include "workbench/xml_to_json.h"

namespace quirn {
namespace {

using platform::JsonObject;
using platform::JsonValue;

bool isAttribute(std::string_view key) {
  return key.starts_with('@');
}

const std::string& checkedName(const std::string& name) {
  if (isXmlName(name)) return name;
  const std::string shown = platform::displayText(platform::utf8Prefix(name, 60));
  throw TextToolError(fmt::format("“{}” can’t be the name of an element or attribute in XML.", shown));
}

std::string textOf(const JsonValue& value) {
  if (value.isNull()) return "";
  std::string text = value.string() != nullptr ? *value.string() : value.text();
  if (!firstIllegalXmlCharacter(text).empty()) {
    throw TextToolError("A text holds a character that XML doesn’t allow.");
  }
  return text;
}

void appendElement(std::string& out, const std::string& name, const JsonValue& value);

// A value whose key is `name`: an array is one child for each item.
void appendChildren(std::string& out, const std::string& name, const JsonValue& value) {
  if (value.array() == nullptr) return appendElement(out, name, value);
  for (const JsonValue& item : *value.array()) appendElement(out, name, item);
}

void appendAttributes(std::string& out, const JsonObject& members) {
  for (const auto& [key, value] : members) {
    if (!isAttribute(key)) continue;
    const std::string name = key.substr(1);
    out += fmt::format(" {}=\"{}\"", checkedName(name), escapedXmlAttribute(textOf(value)));
  }
}

void appendContent(std::string& out, const JsonValue& value) {
  if (const JsonObject* const members = value.object()) {
    for (const auto& [key, member] : *members) {
      if (isAttribute(key)) continue;
      if (key == "#text") {
        out += escapedXmlText(textOf(member));
      } else {
        appendChildren(out, key, member);
      }
    }
  } else if (value.array() != nullptr) {
    appendChildren(out, "item", value);
  } else {
    out += escapedXmlText(textOf(value));
  }
}

void appendElement(std::string& out, const std::string& name, const JsonValue& value) {
  out += '<' + checkedName(name);
  if (value.object() != nullptr) appendAttributes(out, *value.object());
  out += '>';
  const std::size_t before = out.size();
  appendContent(out, value);
  if (out.size() > before) {
    out += "</" + name + '>';
  } else {
    out.back() = '/';
    out += '>';
  }
}

// The one member that becomes the root element, if the value is such an object.
const JsonObject::value_type* rootMember(const JsonValue& value) {
  const JsonObject* const members = value.object();
  if (members == nullptr || members->size() != 1) return nullptr;
  const auto& member = members->front();
  return isAttribute(member.first) || member.first == "#text" ? nullptr : &member;
}

}  // namespace

std::string xmlFromJson(const JsonValue& value) {
  std::string out = R"(<?xml version="1.0" encoding="UTF-8"?>)";
  if (const auto* const member = rootMember(value)) {
    appendElement(out, member->first, member->second);
  } else {
    appendElement(out, "root", value);
  }
  return out;
}

}  // namespace quirn
