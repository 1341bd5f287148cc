// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/structured_support.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/text.h"

namespace quirn {
namespace {

constexpr std::array<std::string_view, 25> whiteSpace = {
    " ",      "\t",     "\n",     "\v",     "\f",     "\r",     "\u0085", "\u00A0", "\u1680",
    "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005", "\u2006", "\u2007", "\u2008",
    "\u2009", "\u200A", "\u2028", "\u2029", "\u202F", "\u205F", "\u3000"};

constexpr std::string_view base64Digits = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

constexpr std::array<std::int8_t, 256> base64Values = [] {
  std::array<std::int8_t, 256> values{};
  values.fill(-1);
  for (std::size_t i = 0; i < base64Digits.size(); ++i) {
    values[static_cast<unsigned char>(base64Digits[i])] = static_cast<std::int8_t>(i);
  }
  return values;
}();

int hexValue(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  const char lower = static_cast<char>(digit | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

bool isUnreserved(char character) {
  const char lower = static_cast<char>(character | 0x20);
  return (lower >= 'a' && lower <= 'z') || (character >= '0' && character <= '9') ||
         std::string_view("-_.~").find(character) != std::string_view::npos;
}

// How often the text may be longer than its input, and what is allowed whatever the input.
constexpr std::size_t outputRatio = 16;
constexpr std::size_t outputFloor = std::size_t{256} << 20;

}  // namespace

std::string_view trimmed(std::string_view text) {
  const auto begins = [&](std::string_view space) { return text.starts_with(space); };
  const auto ends = [&](std::string_view space) { return text.ends_with(space); };
  for (const auto* found = whiteSpace.begin();
       (found = std::ranges::find_if(whiteSpace, begins)) != whiteSpace.end();) {
    text.remove_prefix(found->size());
  }
  for (const auto* found = whiteSpace.begin(); (found = std::ranges::find_if(whiteSpace, ends)) != whiteSpace.end();) {
    text.remove_suffix(found->size());
  }
  return text;
}

std::optional<std::string> percentDecoded(std::string_view text) {
  std::string out;
  while (!text.empty()) {
    if (text.front() != '%') {
      out += text.front();
      text.remove_prefix(1);
      continue;
    }
    if (text.size() < 3 || hexValue(text[1]) < 0 || hexValue(text[2]) < 0) return std::nullopt;
    out += static_cast<char>(hexValue(text[1]) * 16 + hexValue(text[2]));
    text.remove_prefix(3);
  }
  if (!platform::isUtf8(out)) return std::nullopt;
  return out;
}

std::string percentEncoded(std::string_view text) {
  std::string out;
  for (const char character : text) {
    if (isUnreserved(character)) {
      out += character;
    } else {
      out += fmt::format("%{:02X}", static_cast<unsigned char>(character));
    }
  }
  return out;
}

std::optional<std::string> base64Decoded(std::string_view text) {
  if (text.size() % 4 != 0) return std::nullopt;
  const std::size_t padding = text.ends_with("==") ? 2 : text.ends_with('=') ? 1 : 0;
  std::string out;
  std::uint32_t bits = 0;
  unsigned count = 0;
  for (const char digit : text.substr(0, text.size() - padding)) {
    const int value = base64Values[static_cast<unsigned char>(digit)];
    if (value < 0) return std::nullopt;
    bits = bits << 6 | static_cast<std::uint32_t>(value);
    count += 6;
    if (count < 8) continue;
    count -= 8;
    out += static_cast<char>(bits >> count & 0xFF);
  }
  return out;
}

std::optional<std::string> isoUtc(std::int64_t secondsSinceEpoch) {
  constexpr std::int64_t firstSecond = -62135596800;
  constexpr std::int64_t lastSecond = 253402300799;
  if (secondsSinceEpoch < firstSecond || secondsSinceEpoch > lastSecond) return std::nullopt;
  const std::chrono::sys_seconds time{std::chrono::seconds(secondsSinceEpoch)};
  const auto day = std::chrono::floor<std::chrono::days>(time);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss clock(time - day);
  return fmt::format("{:04}-{:02}-{:02}T{:02}:{:02}:{:02}Z", static_cast<int>(date.year()),
                     static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()), clock.hours().count(),
                     clock.minutes().count(), clock.seconds().count());
}

std::string relativeText(double secondsFromNow) {
  struct Unit {
    double below;
    double seconds;
    std::string_view name;
  };
  static constexpr std::array<Unit, 4> units = {
      {{60, 1, "second"}, {3600, 60, "minute"}, {86400, 3600, "hour"}, {HUGE_VAL, 86400, "day"}}};
  const double distance = std::abs(secondsFromNow);
  if (distance < 1) return "now";
  const auto* const unit = std::ranges::find_if(units, [&](const Unit& each) { return distance < each.below; });
  const double count = std::round(distance / unit->seconds);
  return fmt::format("{:.0f} {}{} {}", count, unit->name, count == 1 ? "" : "s",
                     secondsFromNow > 0 ? "from now" : "ago");
}

std::string matchHeading(std::size_t count) {
  return fmt::format("{} match{}:\n\n", count, count == 1 ? "" : "es");
}

std::size_t outputLimit(std::size_t inputSize) {
  return outputFloor + outputRatio * inputSize;
}

void failForSize() {
  throw TextToolError("The output would be too large to be shown.");
}

platform::JsonValue jsonInput(std::string_view text, const std::string& message, platform::JsonDuplicates duplicates) {
  try {
    return platform::parsedJson(trimmed(text), duplicates);
  } catch (const platform::JsonError& error) {
    throw asToolError(error, message);
  }
}

TextToolError asToolError(const platform::JsonError& error, const std::string& message) {
  using Reason = platform::JsonError::Reason;
  if (error.reason() == Reason::outputTooLarge) failForSize();
  if (error.reason() == Reason::malformed) return TextToolError(message);
  return TextToolError(fmt::format("This JSON is nested more than {} levels deep.", platform::jsonDepthLimit));
}

TextToolError asToolError(const XmlError& error, const std::string& message) {
  if (error.reason() == XmlError::Reason::outputTooLarge) failForSize();
  if (error.reason() == XmlError::Reason::malformed) return TextToolError(message);
  return TextToolError(fmt::format("This XML is nested more than {} levels deep.", xmlDepthLimit));
}

}  // namespace quirn
