// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A cron expression of five fields, as crontab(5) has it with numbers alone, and the moments at
// which it fires.

#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "platform/civil_time.h"
#include "platform/time_zone.h"

namespace quirn {

struct CronField {
  std::string text;         // as it was written
  std::bitset<60> allowed;  // by value; Sunday is 0
  bool isAny = false;       // written "*"
};

struct CronSchedule {
  CronField minute;
  CronField hour;
  CronField dayOfMonth;
  CronField month;
  CronField dayOfWeek;

  // Throws TextToolError, which names the field that can't be read and what it allows.
  static CronSchedule parsed(std::string_view expression);

  // Whether the schedule fires on that day at all. If both kinds of day are restricted, either may
  // match (crontab(5)).
  bool allowsDay(const platform::CivilTime& time, int weekday) const;
};

// The first moments, at most `count`, at which it fires after the minute of `now`, and up to four
// years from then. In the hour that comes twice when summer ends it fires twice; in the hour that is
// skipped, not at all.
std::vector<std::int64_t> nextFireTimes(const CronSchedule& schedule, std::int64_t now, const platform::TimeZone& zone,
                                        std::size_t count);

}  // namespace quirn
