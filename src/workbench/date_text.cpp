// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/date_text.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>

namespace quirn {
namespace {

constexpr std::array<std::string_view, 12> months = {"January",   "February", "March",    "April",
                                                     "May",       "June",     "July",     "August",
                                                     "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> weekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                      "Thursday", "Friday", "Saturday"};

struct KnownName {
  std::string_view abbreviation;
  int hours;
};

// The abbreviations that American English has for an offset (CLDR, short zone names). Of the others
// several are taken twice, as IST and CST are, and most are unknown to whoever lives elsewhere.
constexpr auto knownNames = std::to_array<KnownName>({{"UTC", 0},
                                                      {"GMT", 0},
                                                      {"AST", -4},
                                                      {"ADT", -3},
                                                      {"EST", -5},
                                                      {"EDT", -4},
                                                      {"CST", -6},
                                                      {"CDT", -5},
                                                      {"MST", -7},
                                                      {"MDT", -6},
                                                      {"PST", -8},
                                                      {"PDT", -7},
                                                      {"AKST", -9},
                                                      {"AKDT", -8},
                                                      {"HST", -10},
                                                      {"HDT", -9}});

std::string nameOfOffset(std::int64_t offset) {
  if (offset == 0) return "GMT";
  const std::int64_t size = std::abs(offset);
  std::string name = fmt::format("GMT{}{}", offset < 0 ? '-' : '+', size / 3600);
  if (size % 3600 != 0) name += fmt::format(":{:02}", size / 60 % 60);
  if (size % 60 != 0) name += fmt::format(":{:02}", size % 60);
  return name;
}

std::string shortName(const platform::ZonePeriod& period) {
  const bool isKnown = std::ranges::any_of(knownNames, [&](const KnownName& known) {
    return known.abbreviation == period.abbreviation && period.offsetSeconds == std::int64_t{3600} * known.hours;
  });
  return isKnown ? period.abbreviation : nameOfOffset(period.offsetSeconds);
}

// ISO 8601 writes the years before 1 BC with a sign.
std::string yearText(std::int64_t year) {
  return year < 0 ? fmt::format("-{:04}", -year) : fmt::format("{:04}", year);
}

std::string fractionText(int nanoseconds) {
  std::string digits = fmt::format(".{:09}", nanoseconds);
  while (digits.ends_with("000")) digits.resize(digits.size() - 3);
  return digits == "." ? "" : digits;
}

}  // namespace

std::string_view monthName(int month) {
  return months.at(static_cast<std::size_t>(month - 1));
}

std::string_view weekdayName(int weekday) {
  return weekdays.at(static_cast<std::size_t>(weekday));
}

ZonedTime zonedTime(std::int64_t seconds, const platform::TimeZone& zone) {
  const auto period = zone.periodAt(seconds);
  std::int64_t local = 0;
  // At the two ends of the range UTC is as good as anything.
  if (__builtin_add_overflow(seconds, period.offsetSeconds, &local)) local = seconds;
  const std::int64_t days = platform::floorDivided(local, platform::secondsPerDay);
  return {platform::civilTimeAt(local), platform::weekdayOf(days), shortName(period)};
}

std::string dateText(const platform::CivilTime& date) {
  return fmt::format("{}-{:02}-{:02}", yearText(date.year), date.month, date.day);
}

std::string minuteText(const platform::CivilTime& time) {
  return fmt::format("{} {:02}:{:02}", dateText(time), time.hour, time.minute);
}

std::string longText(const ZonedTime& time) {
  const platform::CivilTime& civil = time.civil;
  return fmt::format("{:.3}, {:.3} {}, {} at {}:{:02}:{:02} {} {}", weekdayName(time.weekday), monthName(civil.month),
                     civil.day, yearText(civil.year), (civil.hour + 11) % 12 + 1, civil.minute, civil.second,
                     civil.hour < 12 ? "AM" : "PM", time.zone);
}

std::string isoText(const Instant& instant) {
  const auto civil = platform::civilTimeAt(instant.seconds);
  return fmt::format("{}T{:02}:{:02}:{:02}{}Z", dateText(civil), civil.hour, civil.minute, civil.second,
                     fractionText(instant.nanoseconds));
}

std::string mailText(std::int64_t seconds) {
  const auto [civil, weekday, zone] = zonedTime(seconds, platform::TimeZone::utc());
  return fmt::format("{:.3}, {:02} {:.3} {} {:02}:{:02}:{:02} +0000", weekdayName(weekday), civil.day,
                     monthName(civil.month), yearText(civil.year), civil.hour, civil.minute, civil.second);
}

std::string relativeText(const Instant& instant, const Instant& now) {
  return relativeText(static_cast<double>(instant.seconds) - static_cast<double>(now.seconds) +
                      static_cast<double>(instant.nanoseconds - now.nanoseconds) / 1e9);
}

std::string relativeText(double secondsAhead) {
  struct Unit {
    std::string_view name;
    double seconds;
    double below;
  };
  constexpr std::array<Unit, 4> units = {
      {{"second", 1, 60}, {"minute", 60, 3600}, {"hour", 3600, 86400}, {"day", 86400, HUGE_VAL}}};
  const double distance = std::abs(secondsAhead);
  if (distance < 1) return "now";
  const auto unit = std::ranges::find_if(units, [&](auto& each) { return distance < each.below; });
  return counted(std::llround(distance / unit->seconds), unit->name) + (secondsAhead > 0 ? " from now" : " ago");
}

std::string counted(std::int64_t number, std::string_view unit) {
  return fmt::format("{} {}{}", number, unit, number == 1 || number == -1 ? "" : "s");
}

}  // namespace quirn
