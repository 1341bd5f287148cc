// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/reference_support.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "platform/text.h"
#include "workbench/percent_coding.h"

namespace quirn {
namespace {

template <typename Number>
std::optional<Number> whole(std::string_view text) {
  Number value{};
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, value);
  if (error != std::errc() || end != last) return std::nullopt;
  return value;
}

}  // namespace

std::vector<std::string_view> splitAt(std::string_view text, char separator) {
  std::vector<std::string_view> pieces;
  while (true) {
    const std::size_t end = text.find(separator);
    pieces.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return pieces;
    text.remove_prefix(end + 1);
  }
}

std::vector<std::string_view> trimmedLines(std::string_view text) {
  std::vector<std::string_view> lines = splitAt(text, '\n');
  std::ranges::transform(lines, lines.begin(), platform::trimmed);
  std::erase(lines, "");
  return lines;
}

std::vector<std::string_view> words(std::string_view text) {
  std::vector<std::string_view> found;
  for (text = platform::trimmed(text); !text.empty(); text = platform::trimmed(text)) {
    std::size_t end = 1;
    while (end < text.size() && platform::leadingSpaceLength(text.substr(end)) == 0) ++end;
    found.push_back(text.substr(0, end));
    text.remove_prefix(end);
  }
  return found;
}

bool isDigits(std::string_view text) {
  return !text.empty() &&
         std::ranges::all_of(text, [](char character) { return character >= '0' && character <= '9'; });
}

std::optional<std::int64_t> integerIn(std::string_view text) {
  return whole<std::int64_t>(text);
}

std::optional<double> numberIn(std::string_view text) {
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  const auto value = whole<double>(text);
  return value && std::isfinite(*value) ? value : std::nullopt;
}

std::string excerpt(std::string_view text) {
  constexpr std::size_t longest = 200;
  const std::string_view shown = platform::utf8Prefix(text, longest);
  return platform::repairedUtf8(shown) + (shown.size() < text.size() ? "…" : "");
}

std::string readablyDecoded(std::string_view text) {
  const auto decoded = percentDecoded(text);
  const bool isReadable = decoded && platform::displayText(*decoded) == *decoded;
  return isReadable ? *decoded : std::string(text);
}

std::string withoutTrailingZeros(std::string number) {
  if (number.find('.') != std::string::npos) {
    number.erase(number.find_last_not_of('0') + 1);
    if (number.ends_with('.')) number.pop_back();
  }
  return number == "-0" ? "0" : number;
}

}  // namespace quirn
