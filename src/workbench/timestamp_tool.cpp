// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/timestamp_tool.h"

#include <fmt/format.h>

#include "platform/text.h"
#include "workbench/date_reader.h"
#include "workbench/date_text.h"
#include "workbench/reference_support.h"
#include "workbench/reference_tools.h"

namespace quirn {
namespace {

Instant instantOfEpoch(std::int64_t number) {
  // 10000-01-01 in seconds: beyond it, milliseconds are meant.
  constexpr std::int64_t firstMilliseconds = 253402300800;
  if (number < firstMilliseconds) return {number, 0};
  return {number / 1000, static_cast<int>(number % 1000) * 1'000'000};
}

std::optional<Instant> instantIn(std::string_view text) {
  const std::string_view digits = text.starts_with('-') ? text.substr(1) : text;
  const auto number = isDigits(digits) ? integerIn(text) : std::nullopt;
  return number ? instantOfEpoch(*number) : dateIn(text, platform::TimeZone::utc());
}

// `nanoseconds` of a unit of `perUnit` nanoseconds, rounded half away from zero: 0, or 1 for up.
int roundedUp(std::int64_t whole, int nanoseconds, int perUnit) {
  const int half = perUnit / 2;
  return nanoseconds > half || (nanoseconds == half && whole >= 0) ? 1 : 0;
}

std::int64_t roundedSeconds(const Instant& instant) {
  return instant.seconds + roundedUp(instant.seconds, instant.nanoseconds, 1'000'000'000);
}

std::string millisecondText(const Instant& instant) {
  constexpr int perUnit = 1'000'000;
  // Whole seconds may lie so far out that their milliseconds don't fit a number.
  if (instant.nanoseconds == 0) return fmt::format("{}{}", instant.seconds, instant.seconds == 0 ? "" : "000");
  const std::int64_t whole = instant.seconds * 1000 + instant.nanoseconds / perUnit;
  return std::to_string(whole + roundedUp(whole, instant.nanoseconds % perUnit, perUnit));
}

}  // namespace

std::string momentInEveryForm(std::string_view input, const Instant& now, const platform::TimeZone& localZone) {
  input = platform::trimmed(input);
  if (input.empty()) throw TextToolError("Enter a Unix epoch or a date string.");
  const auto instant = instantIn(input);
  if (!instant) {
    throw TextToolError(fmt::format("Could not read \"{}\" as a Unix epoch or date.", excerpt(input)));
  }
  const std::int64_t seconds = instant->seconds;
  return fmt::format(
      "Epoch (seconds):      {}\n"
      "Epoch (milliseconds): {}\n"
      "ISO 8601 (UTC):       {}\n"
      "RFC 2822:             {}\n"
      "Local ({}): {}\n"
      "UTC:                  {}\n"
      "Relative:             {}",
      roundedSeconds(*instant), millisecondText(*instant), isoText(*instant), mailText(seconds), localZone.id(),
      longText(zonedTime(seconds, localZone)), longText(zonedTime(seconds, platform::TimeZone::utc())),
      relativeText(*instant, now));
}

const TextTool& timestampTool() {
  static const TextTool tool{
      .id = "time.timestamp",
      .name = "Timestamp Converter",
      .shortName = "timestamp",
      .icon = "clock.arrow.2.circlepath",
      .category = OperationCategory::time,
      .aliases = {"timestamp", "epoch", "unix time", "iso 8601", "rfc 2822", "date convert"},
      .blurb = "Convert a Unix epoch or ISO 8601 / RFC 2822 string into every common date format.",
      .inputPlaceholder = "1700000000  or  2026-06-14T15:00:00Z",
      .sampleInput = "1700000000",
      .transform = [](std::string_view input, const TextToolOptions& /*options*/) {
        return momentInEveryForm(input, currentInstant(), platform::TimeZone::current());
      }};
  return tool;
}

}  // namespace quirn
