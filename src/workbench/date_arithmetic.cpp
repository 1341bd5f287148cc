// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/date_arithmetic.h"

#include <algorithm>
#include <cstdlib>

namespace quirn {
namespace {

using platform::CivilTime;
using platform::secondsPerDay;

// Far above all years that are written, far below where the arithmetic of seconds would end.
constexpr std::int64_t mostYears = 99999;

bool isInRange(std::int64_t amount, std::int64_t perYear) {
  return amount >= -2 * mostYears * perYear && amount <= 2 * mostYears * perYear;
}

CivilTime monthsLater(CivilTime date, std::int64_t months) {
  const std::int64_t month = date.year * 12 + date.month - 1 + months;
  date.year = platform::floorDivided(month, 12);
  date.month = static_cast<int>(month - date.year * 12) + 1;
  date.day = std::min(date.day, platform::daysInMonth(date.year, date.month));
  return date;
}

CivilTime daysLater(const CivilTime& date, std::int64_t days) {
  return platform::civilTimeAt(platform::secondsSinceEpoch(date) + days * secondsPerDay);
}

}  // namespace

std::optional<CivilTime> dateAfter(const CivilTime& date, std::int64_t amount, std::string_view unit) {
  const bool byMonths = unit == "months" || unit == "years";
  if (!isInRange(amount, byMonths ? 12 : 366)) return std::nullopt;
  if (unit == "years") amount *= 12;
  if (unit == "weeks") amount *= 7;
  const CivilTime result = byMonths ? monthsLater(date, amount) : daysLater(date, amount);
  return std::abs(result.year) <= mostYears ? std::optional(result) : std::nullopt;
}

CalendarDifference calendarDifference(const CivilTime& begin, const CivilTime& end) {
  const std::int64_t endSeconds = platform::secondsSinceEpoch(end);
  const std::int64_t seconds = endSeconds - platform::secondsSinceEpoch(begin);
  std::int64_t months = (end.year - begin.year) * 12 + end.month - begin.month;
  const auto secondsBeyond = [&] { return endSeconds - platform::secondsSinceEpoch(monthsLater(begin, months)); };
  // Short of a whole month at the end: one month less, in either direction.
  if (seconds > 0 && secondsBeyond() < 0) --months;
  if (seconds < 0 && secondsBeyond() > 0) ++months;
  return {seconds / secondsPerDay, months, secondsBeyond() / secondsPerDay};
}

}  // namespace quirn
