// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <charconv>

#include "pdf/bookmark_entry.h"
#include "platform/json.h"
#include "platform/text.h"

namespace quirn {
namespace {

using platform::JsonArray;
using platform::JsonNumber;
using platform::JsonObject;
using platform::JsonValue;

using Entries = std::vector<BookmarkEntry>;

std::optional<std::int64_t> parsePage(std::string_view text) {
  std::int64_t page = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), page);
  return error == std::errc() && end == text.data() + text.size() ? std::optional(page) : std::nullopt;
}

std::optional<BookmarkEntry> entryOf(const JsonValue& value) {
  const JsonValue* const title = value.find("title");
  const JsonValue* const page = value.find("page");
  if (title == nullptr || title->string() == nullptr || page == nullptr || page->number() == nullptr) {
    return std::nullopt;
  }
  const auto number = parsePage(page->number()->text);
  if (!number) return std::nullopt;
  return BookmarkEntry{.id = platform::Uuid::random(), .title = *title->string(), .page = *number};
}

std::optional<Entries> parseJson(std::string_view text) {
  try {
    const JsonValue value = platform::parsedJson(text);
    if (value.array() == nullptr) return std::nullopt;
    Entries entries;
    for (const JsonValue& item : *value.array()) {
      const auto entry = entryOf(item);
      if (!entry) return std::nullopt;
      entries.push_back(*entry);
    }
    return entries;
  } catch (const platform::JsonError&) {
    return std::nullopt;
  }
}

std::optional<Entries> parseLines(std::string_view text) {
  Entries entries;
  while (!text.empty()) {
    const std::size_t end = text.find_first_of(";\n");
    const std::string_view line = platform::trimmed(text.substr(0, end));
    text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    if (line.empty()) continue;
    const std::size_t blank = line.find_first_of(" \t");
    const auto page = parsePage(line.substr(0, blank));
    if (!page) return std::nullopt;
    const std::string_view title = blank == std::string_view::npos ? "" : platform::trimmed(line.substr(blank));
    entries.push_back({.id = platform::Uuid::random(), .title = std::string(title), .page = *page});
  }
  return entries;
}

}  // namespace

std::string bookmarkListText(const std::vector<BookmarkEntry>& entries) {
  JsonArray array;
  for (const BookmarkEntry& entry : entries) {
    array.emplace_back(JsonObject{{"title", entry.title}, {"page", JsonNumber{std::to_string(entry.page)}}});
  }
  return JsonValue(std::move(array)).text();
}

std::optional<std::vector<BookmarkEntry>> parseBookmarkList(std::string_view text) {
  return platform::trimmed(text).starts_with('[') ? parseJson(text) : parseLines(text);
}

}  // namespace quirn
