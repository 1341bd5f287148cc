// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/civil_time.h"

#include <chrono>

namespace quirn::platform {
namespace {

// The calendar repeats after 400 years; within one such cycle <chrono> serves.
constexpr std::int64_t yearsPerCycle = 400;
constexpr std::int64_t daysPerCycle = 146097;

std::chrono::year_month yearMonth(std::int64_t year, int month) {
  const std::int64_t inCycle = floorRemainder(year, yearsPerCycle);
  return std::chrono::year(static_cast<int>(inCycle)) / std::chrono::month(static_cast<unsigned>(month));
}

}  // namespace

std::int64_t daysSinceEpoch(std::int64_t year, int month, int day) {
  const std::chrono::sys_days inCycle = yearMonth(year, month) / std::chrono::day(static_cast<unsigned>(day));
  return inCycle.time_since_epoch().count() + floorDivided(year, yearsPerCycle) * daysPerCycle;
}

std::int64_t secondsSinceEpoch(const CivilTime& time) {
  const int secondOfDay = time.hour * 3600 + time.minute * 60 + time.second;
  return daysSinceEpoch(time.year, time.month, time.day) * secondsPerDay + secondOfDay;
}

CivilTime civilTimeAt(std::int64_t seconds) {
  const std::int64_t days = floorDivided(seconds, secondsPerDay);
  const int secondOfDay = static_cast<int>(floorRemainder(seconds, secondsPerDay));
  const std::int64_t cycle = floorDivided(days, daysPerCycle);
  const std::chrono::year_month_day date{std::chrono::sys_days(std::chrono::days(floorRemainder(days, daysPerCycle)))};
  return {.year = static_cast<int>(date.year()) + cycle * yearsPerCycle,
          .month = static_cast<int>(static_cast<unsigned>(date.month())),
          .day = static_cast<int>(static_cast<unsigned>(date.day())),
          .hour = secondOfDay / 3600,
          .minute = secondOfDay / 60 % 60,
          .second = secondOfDay % 60};
}

int weekdayOf(std::int64_t days) {
  constexpr std::int64_t weekdayOfEpoch = 4;  // a Thursday
  return static_cast<int>(days % 7 + 7 + weekdayOfEpoch) % 7;
}

bool isLeapYear(std::int64_t year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

int daysInMonth(std::int64_t year, int month) {
  const auto last = yearMonth(year, month) / std::chrono::last;
  return static_cast<int>(static_cast<unsigned>(last.day()));
}

}  // namespace quirn::platform
