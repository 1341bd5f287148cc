// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/reference_support.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

#include "platform/text.h"

namespace quirn {
namespace {

// The characters of the property White_Space beyond ASCII.
constexpr std::array<std::string_view, 19> wideSpace = {
    "\u0085", "\u00A0", "\u1680", "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006",
    "\u2007", "\u2008", "\u2009", "\u200A", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"};

bool isAsciiSpace(char character) {
  return character == ' ' || (character >= '\t' && character <= '\r');
}

// In bytes, 0 if there is none.
std::size_t spaceAtBegin(std::string_view text) {
  if (text.empty() || isAsciiSpace(text.front())) return text.empty() ? 0 : 1;
  if (static_cast<unsigned char>(text.front()) < 0x80) return 0;
  const auto found = std::ranges::find_if(wideSpace, [&](auto space) { return text.starts_with(space); });
  return found == wideSpace.end() ? 0 : found->size();
}

std::size_t spaceAtEnd(std::string_view text) {
  if (text.empty() || isAsciiSpace(text.back())) return text.empty() ? 0 : 1;
  if (static_cast<unsigned char>(text.back()) < 0x80) return 0;
  const auto found = std::ranges::find_if(wideSpace, [&](auto space) { return text.ends_with(space); });
  return found == wideSpace.end() ? 0 : found->size();
}

int hexValue(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  if (digit >= 'a' && digit <= 'f') return digit - 'a' + 10;
  if (digit >= 'A' && digit <= 'F') return digit - 'A' + 10;
  return -1;
}

// Of the escape at the beginning, or -1.
int escapedByte(std::string_view text) {
  if (text.size() < 3 || text.front() != '%') return -1;
  const int high = hexValue(text[1]);
  const int low = hexValue(text[2]);
  return high < 0 || low < 0 ? -1 : high * 16 + low;
}

template <typename Number>
std::optional<Number> whole(std::string_view text) {
  Number value{};
  const char* const last = text.data() + text.size();
  const auto [end, error] = std::from_chars(text.data(), last, value);
  if (error != std::errc() || end != last) return std::nullopt;
  return value;
}

}  // namespace

std::string_view trimmed(std::string_view text) {
  while (const std::size_t length = spaceAtBegin(text)) text.remove_prefix(length);
  while (const std::size_t length = spaceAtEnd(text)) text.remove_suffix(length);
  return text;
}

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
  std::ranges::transform(lines, lines.begin(), trimmed);
  std::erase(lines, "");
  return lines;
}

std::vector<std::string_view> words(std::string_view text) {
  std::vector<std::string_view> found;
  for (text = trimmed(text); !text.empty(); text = trimmed(text)) {
    std::size_t end = 1;
    while (end < text.size() && spaceAtBegin(text.substr(end)) == 0) ++end;
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

std::string percentDecoded(std::string_view text) {
  std::string decoded;
  for (std::size_t at = 0; at < text.size(); ++at) {
    const int byte = escapedByte(text.substr(at));
    decoded += byte < 0 ? text[at] : static_cast<char>(byte);
    if (byte >= 0) at += 2;
  }
  // Changed by it is what holds control characters or isn't UTF-8.
  return platform::displayText(decoded) == decoded ? decoded : std::string(text);
}

std::string withoutTrailingZeros(std::string number) {
  if (number.find('.') != std::string::npos) {
    number.erase(number.find_last_not_of('0') + 1);
    if (number.ends_with('.')) number.pop_back();
  }
  return number == "-0" ? "0" : number;
}

}  // namespace quirn
