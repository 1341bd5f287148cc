// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// JSON (RFC 8259) as a value: objects keep the order of their keys, numbers the text they were
// written as, so that 1.0, 1e400 and integers of forty digits come out as they came in.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace quirn::platform {

class JsonValue;

struct JsonNumber {
  std::string text;
};
using JsonArray = std::vector<JsonValue>;
using JsonObject = std::vector<std::pair<std::string, JsonValue>>;

class JsonValue {
 public:
  JsonValue() = default;  // null
  JsonValue(std::nullptr_t) {}
  JsonValue(bool value) : value_(value) {}
  JsonValue(int value) : JsonValue(static_cast<std::int64_t>(value)) {}
  JsonValue(std::int64_t value) : value_(JsonNumber{std::to_string(value)}) {}
  JsonValue(JsonNumber value) : value_(std::move(value)) {}
  JsonValue(std::string value) : value_(std::move(value)) {}
  JsonValue(std::string_view value) : value_(std::string(value)) {}
  JsonValue(const char* value) : value_(std::string(value)) {}
  JsonValue(JsonArray value) : value_(std::move(value)) {}
  JsonValue(JsonObject value) : value_(std::move(value)) {}

  // On one line. Text that is not UTF-8 comes out with U+FFFD in place of what is not.
  std::string text() const;

 private:
  void append(std::string& out) const;

  std::variant<std::monostate, bool, JsonNumber, std::string, JsonArray, JsonObject> value_;
};

// Appends `text` as a JSON string, quotes included.
void appendJsonString(std::string& out, std::string_view text);

}  // namespace quirn::platform
