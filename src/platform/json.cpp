// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/json.h"

#include <fmt/format.h>

#include <iterator>

#include "platform/text.h"

namespace quirn::platform {
namespace {

std::string_view shortEscape(char character) {
  switch (character) {
    case '"': return "\\\"";
    case '\\': return "\\\\";
    case '\b': return "\\b";
    case '\f': return "\\f";
    case '\n': return "\\n";
    case '\r': return "\\r";
    case '\t': return "\\t";
    default: return {};
  }
}

}  // namespace

void appendJsonString(std::string& out, std::string_view text) {
  out += '"';
  for (const char character : isUtf8(text) ? std::string(text) : repairedUtf8(text)) {
    if (const std::string_view escape = shortEscape(character); !escape.empty()) {
      out += escape;
    } else if (static_cast<unsigned char>(character) < 0x20) {
      fmt::format_to(std::back_inserter(out), "\\u{:04x}", static_cast<unsigned>(character));
    } else {
      out += character;
    }
  }
  out += '"';
}

void JsonValue::append(std::string& out) const {
  if (std::holds_alternative<std::monostate>(value_)) {
    out += "null";
  } else if (const auto* truth = std::get_if<bool>(&value_)) {
    out += *truth ? "true" : "false";
  } else if (const auto* number = std::get_if<JsonNumber>(&value_)) {
    out += number->text;
  } else if (const auto* text = std::get_if<std::string>(&value_)) {
    appendJsonString(out, *text);
  } else if (const auto* array = std::get_if<JsonArray>(&value_)) {
    out += '[';
    for (const JsonValue& element : *array) {
      if (&element != &array->front()) out += ',';
      element.append(out);
    }
    out += ']';
  } else {
    const auto& object = std::get<JsonObject>(value_);
    out += '{';
    for (const auto& member : object) {
      if (&member != &object.front()) out += ',';
      appendJsonString(out, member.first);
      out += ':';
      member.second.append(out);
    }
    out += '}';
  }
}

std::string JsonValue::text() const {
  std::string out;
  append(out);
  return out;
}

}  // namespace quirn::platform
