// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// JSON (RFC 8259) as a value: objects keep the order of their keys, numbers the text they were
// written as, so that 1.0, 1e400 and integers of forty digits come out as they came in.
//
// A lone surrogate, which only an escape can state, is held as the three bytes that UTF-8 would give
// it and written as an escape again.

#pragma once

#include <cstddef>
#include <cstdint>
#include <exception>
#include <limits>
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

// Pretty is two blanks a level, one member or item a line, and "key": value.
enum class JsonLayout { compact, pretty };

// What becomes of a key that an object states twice.
enum class JsonDuplicates { kept, lastValueWins };

// Deeper text is refused, so that walking a value by recursion is safe.
inline constexpr std::size_t jsonDepthLimit = 1000;

// Why text is not JSON, or is not taken.
class JsonError final : public std::exception {
 public:
  enum class Reason { malformed, tooDeep, outputTooLarge };

  JsonError(Reason reason, std::size_t offset) : reason_(reason), offset_(offset) {}
  Reason reason() const { return reason_; }
  // The byte at which the text stops to be JSON.
  std::size_t offset() const { return offset_; }
  const char* what() const noexcept override { return "not JSON"; }

 private:
  Reason reason_;
  std::size_t offset_;
};

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

  bool isNull() const { return std::holds_alternative<std::monostate>(value_); }
  // Null pointers where the value is of another kind.
  const bool* truth() const { return std::get_if<bool>(&value_); }
  const JsonNumber* number() const { return std::get_if<JsonNumber>(&value_); }
  const std::string* string() const { return std::get_if<std::string>(&value_); }
  const JsonArray* array() const { return std::get_if<JsonArray>(&value_); }
  const JsonObject* object() const { return std::get_if<JsonObject>(&value_); }
  // The member of that key, the last if there are several; null if there is none.
  const JsonValue* find(std::string_view key) const;

  // The members of every object in the order of their keys' code points.
  void sortKeys();

  // Text that is not UTF-8 comes out with U+FFFD in place of what is not. Throws JsonError as soon as
  // there would be more than `limit` bytes.
  std::string text(JsonLayout layout = JsonLayout::compact,
                   std::size_t limit = std::numeric_limits<std::size_t>::max()) const;

 private:
  std::variant<std::monostate, bool, JsonNumber, std::string, JsonArray, JsonObject> value_;
};

// Strict, but for a byte order mark at the beginning, which is skipped. Throws JsonError.
JsonValue parsedJson(std::string_view text, JsonDuplicates duplicates = JsonDuplicates::kept);

// Appends `text` as a JSON string, quotes included, slashes as they are.
void appendJsonString(std::string& out, std::string_view text);

}  // namespace quirn::platform
