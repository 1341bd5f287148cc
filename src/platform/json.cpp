// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/json.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <unordered_map>

#include "platform/json_scanner.h"
#include "platform/json_writer.h"
#include "platform/text.h"

namespace quirn::platform {
namespace {

// Reads a value by recursion, which the scanner's limit of depth bounds.
class Reader {
 public:
  Reader(std::string_view text, JsonDuplicates duplicates) : scanner_(text), duplicates_(duplicates) {}

  JsonValue document() {
    JsonValue value = valueFrom(scanner_.next());
    scanner_.next();  // the end, or it throws
    return value;
  }

 private:
  JsonValue valueFrom(JsonToken token);
  JsonValue array();
  JsonValue object();
  std::string string() const;

  JsonScanner scanner_;
  JsonDuplicates duplicates_;
};

JsonObject withLastValues(JsonObject members) {
  JsonObject kept;
  kept.reserve(members.size());
  std::unordered_map<std::string_view, std::size_t> positions;
  for (auto& member : members) {
    const auto found = positions.find(member.first);
    if (found != positions.end()) {
      kept[found->second].second = std::move(member.second);
    } else {
      kept.push_back(std::move(member));
      positions.emplace(kept.back().first, kept.size() - 1);
    }
  }
  return kept;
}

// Small objects are the many, and are told by looking at each pair.
bool mayRepeatKeys(const JsonObject& members) {
  if (members.size() > 16) return true;
  for (std::size_t i = 1; i < members.size(); ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      if (members[i].first == members[j].first) return true;
    }
  }
  return false;
}

JsonValue Reader::valueFrom(JsonToken token) {
  switch (token) {
    case JsonToken::beginObject: return object();
    case JsonToken::beginArray: return array();
    case JsonToken::string: return string();
    case JsonToken::number: return JsonNumber{std::string(scanner_.raw())};
    case JsonToken::trueWord: return true;
    case JsonToken::falseWord: return false;
    default: return nullptr;
  }
}

std::string Reader::string() const {
  if (scanner_.hasEscapes()) return decodedJsonString(scanner_.raw());
  return std::string(scanner_.raw().substr(1, scanner_.raw().size() - 2));
}

JsonValue Reader::array() {
  JsonArray items;
  for (JsonToken token = scanner_.next(); token != JsonToken::endArray; token = scanner_.next()) {
    items.push_back(valueFrom(token));
  }
  return items;
}

JsonValue Reader::object() {
  JsonObject members;
  while (scanner_.next() != JsonToken::endObject) {
    std::string key = string();
    members.emplace_back(std::move(key), valueFrom(scanner_.next()));
  }
  if (duplicates_ == JsonDuplicates::lastValueWins && mayRepeatKeys(members)) {
    return withLastValues(std::move(members));
  }
  return members;
}

// By recursion: values come from text of bounded depth, or from our own code.
class ValueWriter {
 public:
  ValueWriter(std::string& out, JsonLayout layout, std::size_t limit) : writer_(out, layout), limit_(limit) {}

  void write(const JsonValue& value);
  void finish() { writer_.finish(); }

 private:
  void writeItems(const JsonArray& items);
  void writeMembers(const JsonObject& members);

  JsonWriter writer_;
  std::size_t limit_;
};

void ValueWriter::write(const JsonValue& value) {
  if (const bool* truth = value.truth()) {
    writer_.value(*truth ? "true" : "false");
  } else if (const JsonNumber* number = value.number()) {
    writer_.value(number->text);
  } else if (const std::string* text = value.string()) {
    writer_.stringText(*text);
  } else if (const JsonArray* array = value.array()) {
    writeItems(*array);
  } else if (const JsonObject* object = value.object()) {
    writeMembers(*object);
  } else {
    writer_.value("null");
  }
  if (writer_.size() > limit_) throw JsonError(JsonError::Reason::outputTooLarge, 0);
}

void ValueWriter::writeItems(const JsonArray& items) {
  writer_.open('[');
  for (const JsonValue& item : items) write(item);
  writer_.close(']');
}

void ValueWriter::writeMembers(const JsonObject& members) {
  writer_.open('{');
  for (const auto& [key, member] : members) {
    writer_.keyText(key);
    write(member);
  }
  writer_.close('}');
}

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

bool needsEscape(char character) {
  return static_cast<unsigned char>(character) < 0x20 || character == '"' || character == '\\';
}

void appendEscape(std::string& out, char character) {
  const std::string_view escape = shortEscape(character);
  out += escape;
  if (escape.empty()) {
    fmt::format_to(std::back_inserter(out), "\\u{:04x}", static_cast<unsigned>(character));
  }
}

void appendEscaped(std::string& out, std::string_view text) {
  while (!text.empty()) {
    const auto* const end = std::ranges::find_if(text, needsEscape);
    const auto plain = static_cast<std::size_t>(end - text.begin());
    out += text.substr(0, plain);
    if (plain == text.size()) return;
    appendEscape(out, text[plain]);
    text.remove_prefix(plain + 1);
  }
}

// The surrogate whose three bytes begin `bytes`, 0 if there is none.
unsigned surrogateAt(std::string_view bytes) {
  if (bytes.size() < 3 || bytes[0] != '\xED') return 0;
  const auto second = static_cast<unsigned char>(bytes[1]);
  const auto third = static_cast<unsigned char>(bytes[2]);
  if (second < 0xA0 || second > 0xBF || (third & 0xC0) != 0x80) return 0;
  return 0xD000U | (second & 0x3FU) << 6 | (third & 0x3FU);
}

void appendRepaired(std::string& out, std::string_view bytes) {
  while (!bytes.empty()) {
    const unsigned surrogate = surrogateAt(bytes);
    const std::size_t end = surrogate == 0 ? std::min(bytes.find('\xED', 1), bytes.size()) : 3;
    if (surrogate == 0) {
      appendEscaped(out, repairedUtf8(bytes.substr(0, end)));
    } else {
      fmt::format_to(std::back_inserter(out), "\\u{:04x}", surrogate);
    }
    bytes.remove_prefix(end);
  }
}

}  // namespace

void appendJsonString(std::string& out, std::string_view text) {
  out += '"';
  if (isUtf8(text)) {
    appendEscaped(out, text);
  } else {
    appendRepaired(out, text);
  }
  out += '"';
}

JsonValue parsedJson(std::string_view text, JsonDuplicates duplicates) {
  return Reader(text, duplicates).document();
}

const JsonValue* JsonValue::find(std::string_view key) const {
  if (object() == nullptr) return nullptr;
  const auto found =
      std::find_if(object()->rbegin(), object()->rend(), [key](const auto& member) { return member.first == key; });
  return found == object()->rend() ? nullptr : &found->second;
}

void JsonValue::sortKeys() {
  if (auto* items = std::get_if<JsonArray>(&value_)) {
    for (JsonValue& item : *items) item.sortKeys();
  } else if (auto* members = std::get_if<JsonObject>(&value_)) {
    for (auto& member : *members) member.second.sortKeys();
    std::ranges::stable_sort(*members, {}, &JsonObject::value_type::first);
  }
}

std::string JsonValue::text(JsonLayout layout, std::size_t limit) const {
  std::string out;
  ValueWriter writer(out, layout, limit);
  writer.write(*this);
  writer.finish();
  return out;
}

}  // namespace quirn::platform
