// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/page_groups.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>

#include "platform/text.h"

namespace quirn {
namespace {

// A decimal number, with a sign or without.
std::optional<std::int64_t> parseInteger(std::string_view text) {
  text = platform::trimmed(text);
  if (text.starts_with('+') && text.size() > 1 && text[1] != '-') text.remove_prefix(1);
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (end != text.data() + text.size() || error != std::errc()) return std::nullopt;
  return value;
}

std::optional<PageGroup> groupOf(std::string_view piece, std::int64_t pageCount) {
  const std::size_t dash = piece.find('-');
  const auto low = parseInteger(piece.substr(0, dash));
  const auto high = dash == std::string_view::npos ? low : parseInteger(piece.substr(dash + 1));
  if (!low || !high || *low < 1 || *low > pageCount || *low > *high) return std::nullopt;
  const std::int64_t last = std::min(*high, pageCount);
  return PageGroup{.first = static_cast<std::size_t>(*low - 1), .count = static_cast<std::size_t>(last - *low + 1)};
}

}  // namespace

std::vector<PageGroup> groupsOfEvery(std::int64_t pagesPerChunk, std::size_t pageCount) {
  const auto size = static_cast<std::size_t>(std::max<std::int64_t>(1, pagesPerChunk));
  std::vector<PageGroup> groups;
  for (std::size_t first = 0; first < pageCount; first += size) {
    groups.push_back({.first = first, .count = std::min(size, pageCount - first)});
  }
  return groups;
}

std::vector<PageGroup> groupsOfRanges(std::string_view text, std::size_t pageCount) {
  std::vector<PageGroup> groups;
  while (!text.empty()) {
    const std::size_t comma = text.find(',');
    if (const auto group = groupOf(text.substr(0, comma), static_cast<std::int64_t>(pageCount)))
      groups.push_back(*group);
    text.remove_prefix(comma == std::string_view::npos ? text.size() : comma + 1);
  }
  return groups;
}

}  // namespace quirn
