// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/dos_time.h"

#include <algorithm>

#include "platform/civil_time.h"

namespace quirn {
namespace {

constexpr std::int64_t firstYear = 1980;
constexpr std::int64_t lastYear = firstYear + 127;

bool exists(const platform::CivilTime& time) {
  return time.month >= 1 && time.month <= 12 && time.day >= 1 &&
         time.day <= platform::daysInMonth(time.year, time.month) && time.hour < 24 && time.minute < 60 &&
         time.second < 60;
}

}  // namespace

DosTime dosTimeOf(std::chrono::sys_seconds instant, const platform::TimeZone& zone) {
  const std::int64_t seconds = instant.time_since_epoch().count();
  const platform::CivilTime local = platform::civilTimeAt(seconds + zone.periodAt(seconds).offsetSeconds);
  constexpr DosTime last{.date = 127 << 9 | 12 << 5 | 31, .time = 23 << 11 | 59 << 5 | 29};
  if (local.year > lastYear) return last;
  const std::int64_t year = std::max(local.year, firstYear) - firstYear;
  return {static_cast<std::uint16_t>(year << 9 | local.month << 5 | local.day),
          static_cast<std::uint16_t>(local.hour << 11 | local.minute << 5 | local.second / 2)};
}

std::chrono::sys_seconds instantOf(DosTime dos, const platform::TimeZone& zone) {
  const platform::CivilTime time{.year = (dos.date >> 9) + firstYear,
                                 .month = dos.date >> 5 & 15,
                                 .day = dos.date & 31,
                                 .hour = dos.time >> 11,
                                 .minute = dos.time >> 5 & 63,
                                 .second = (dos.time & 31) * 2};
  if (!exists(time)) return {};
  return std::chrono::sys_seconds(std::chrono::seconds(zone.instantOf(platform::secondsSinceEpoch(time))));
}

}  // namespace quirn
