// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/json_path.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>

#include "platform/text.h"
#include "workbench/structured_support.h"
#include "workbench/text_tool.h"

namespace quirn::json_path {
namespace {

using platform::JsonValue;

std::optional<std::int64_t> signedInteger(std::string_view text) {
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return std::nullopt;
  }
  std::int64_t value = 0;
  const char* const end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, value);
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

std::string_view firstCharacters(std::string_view text, std::size_t count) {
  std::size_t end = 0;
  for (; count > 0 && end < text.size(); --count) {
    end += std::max<std::size_t>(platform::utf8SequenceLength(text.substr(end)), 1);
  }
  return text.substr(0, end);
}

class Parser {
 public:
  explicit Parser(std::string_view path) : path_(path) {}

  std::vector<Step> steps() {
    if (!path_.starts_with('$')) throw TextToolError("JSONPath must start with $.");
    at_ = 1;
    std::vector<Step> steps;
    while (at_ < path_.size()) steps.push_back(step());
    return steps;
  }

 private:
  char peek() const { return at_ < path_.size() ? path_[at_] : '\0'; }
  Step step();
  Selector name();
  Selector bracket();
  Selector quotedKey();
  std::string_view takeUntil(std::string_view marks);
  void skipPastBracket();

  std::string_view path_;
  std::size_t at_ = 0;
};

Step Parser::step() {
  if (peek() == '[') return {false, bracket()};
  if (peek() != '.') {
    throw TextToolError(fmt::format("Unexpected character in path near “{}”.", firstCharacters(path_.substr(at_), 8)));
  }
  ++at_;
  const bool recursive = peek() == '.';
  if (recursive) ++at_;
  return {recursive, peek() == '[' ? bracket() : name()};
}

std::string_view Parser::takeUntil(std::string_view marks) {
  const std::size_t end = std::min(path_.find_first_of(marks, at_), path_.size());
  const std::string_view taken = path_.substr(at_, end - at_);
  at_ = end;
  return taken;
}

Selector Parser::name() {
  const std::string_view name = takeUntil(".[");
  if (name.empty()) throw TextToolError("Empty step in path.");
  if (name == "*") return Wildcard();
  return Key{std::string(name)};
}

Selector Parser::bracket() {
  ++at_;
  while (peek() == ' ' || peek() == '\t') ++at_;
  if (peek() == '\'' || peek() == '"') return quotedKey();
  const bool isWildcard = peek() == '*';
  const std::string_view text = platform::trimmed(takeUntil("]"));
  skipPastBracket();
  if (isWildcard) return Wildcard();
  const std::optional<std::int64_t> index = signedInteger(text);
  if (!index) throw TextToolError(fmt::format("Invalid array index “{}”.", text));
  return Index{*index};
}

Selector Parser::quotedKey() {
  const char quote = path_[at_++];
  std::string key;
  for (; at_ < path_.size() && path_[at_] != quote; ++at_) {
    if (path_[at_] == '\\' && at_ + 1 < path_.size()) ++at_;
    key += path_[at_];
  }
  at_ = std::min(at_ + 1, path_.size());
  takeUntil("]");
  skipPastBracket();
  return Key{std::move(key)};
}

// A bracket that is still open ends with the path, as while it is being typed.
void Parser::skipPastBracket() {
  at_ = std::min(at_ + 1, path_.size());
}

// Walks values and counts its steps.
class Evaluator {
 public:
  void apply(const JsonValue& value, const Step& step) {
    std::visit([&](const auto& selector) { step.recursive ? beneath(value, selector) : at(value, selector); },
               step.selector);
  }
  std::vector<const JsonValue*> found() { return std::exchange(found_, {}); }

 private:
  template <class Visitor>
  void forEachChild(const JsonValue& value, const Visitor& visit) {
    if (const auto* array = value.array()) {
      for (const JsonValue& item : *array) visit(item);
    } else if (const auto* object = value.object()) {
      for (const auto& member : *object) visit(member.second);
    }
  }

  void at(const JsonValue& value, const Key& key) { add(value.find(key.name)); }

  void at(const JsonValue& value, const Index& index) {
    const auto* const array = value.array();
    if (array == nullptr || index.position < 0 || static_cast<std::uint64_t>(index.position) >= array->size()) return;
    add(&(*array)[static_cast<std::size_t>(index.position)]);
  }

  void at(const JsonValue& value, const Wildcard&) {
    forEachChild(value, [this](const JsonValue& child) { add(&child); });
  }

  // The value itself is looked at too, then what is in it.
  void beneath(const JsonValue& value, const Key& key) {
    at(value, key);
    forEachChild(value, [&](const JsonValue& child) { beneath(child, key); });
  }

  void beneath(const JsonValue& value, const Index& index) {
    forEachChild(value, [&](const JsonValue& child) {
      at(child, index);
      beneath(child, index);
    });
  }

  void beneath(const JsonValue& value, const Wildcard& all) {
    forEachChild(value, [&](const JsonValue& child) {
      add(&child);
      beneath(child, all);
    });
  }

  void add(const JsonValue* value) {
    ++visited_;
    if (visited_ > visitLimit) throw TextToolError("This path visits too many values.");
    if (value != nullptr) found_.push_back(value);
  }

  // A second or so, and some hundred megabytes.
  static constexpr std::size_t visitLimit = 50'000'000;

  std::vector<const JsonValue*> found_;
  std::size_t visited_ = 0;
};

}  // namespace

std::vector<Step> parsedSteps(std::string_view path) {
  return Parser(path).steps();
}

std::vector<const JsonValue*> matches(const JsonValue& document, const std::vector<Step>& steps) {
  std::vector<const JsonValue*> frontier = {&document};
  Evaluator evaluator;
  for (const Step& step : steps) {
    for (const JsonValue* value : frontier) evaluator.apply(*value, step);
    frontier = evaluator.found();
  }
  return frontier;
}

}  // namespace quirn::json_path
