// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The proleptic Gregorian calendar (ISO 8601: the year 0 is 1 BC) over the whole range of 64-bit
// seconds, which is wider than the years of <chrono>.

#pragma once

#include <cstdint>

namespace quirn::platform {

constexpr std::int64_t secondsPerDay = 86400;

struct CivilTime {
  std::int64_t year = 1970;
  int month = 1;  // 1 to 12
  int day = 1;    // 1 to 31
  int hour = 0;
  int minute = 0;
  int second = 0;
};

// Rounded down, for a positive divisor: -1 / 60 is -1.
constexpr std::int64_t floorDivided(std::int64_t value, std::int64_t divisor) {
  return value / divisor - (value % divisor < 0 ? 1 : 0);
}

// From 0 to below the divisor: -1 leaves 59 of 60.
constexpr std::int64_t floorRemainder(std::int64_t value, std::int64_t divisor) {
  return value % divisor + (value % divisor < 0 ? divisor : 0);
}

// Days since 1970-01-01. The date must exist, its year be below 10^12 either way.
std::int64_t daysSinceEpoch(std::int64_t year, int month, int day);

// Seconds since 1970-01-01 00:00:00 on the same clock.
std::int64_t secondsSinceEpoch(const CivilTime& time);

CivilTime civilTimeAt(std::int64_t secondsSinceEpoch);

// 0 is Sunday.
int weekdayOf(std::int64_t daysSinceEpoch);

bool isLeapYear(std::int64_t year);
int daysInMonth(std::int64_t year, int month);

}  // namespace quirn::platform
