// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Dates and times as text, in the words and abbreviations of American English whatever the user's
// language, so that results can be compared and processed.

#pragma once

#include <string>
#include <string_view>

#include "platform/civil_time.h"
#include "platform/time_zone.h"
#include "workbench/instant.h"

namespace quirn {

std::string_view monthName(int month);      // 1 is "January"
std::string_view weekdayName(int weekday);  // 0 is "Sunday"

// What a zone's clocks show, with the short name that their offset has: "EDT", "UTC", "GMT+9".
struct ZonedTime {
  platform::CivilTime civil;
  int weekday = 0;
  std::string zone;
};

ZonedTime zonedTime(std::int64_t seconds, const platform::TimeZone& zone);

// 2026-06-14, with more digits or a sign where the year needs them.
std::string dateText(const platform::CivilTime& date);

// 2026-06-14 15:00
std::string minuteText(const platform::CivilTime& time);

// Sun, Jun 14, 2026 at 3:00:00 PM UTC
std::string longText(const ZonedTime& time);

// 2026-06-14T15:00:00Z; with a fraction of three, six or nine digits where the instant has one.
std::string isoText(const Instant& instant);

// Sun, 14 Jun 2026 15:00:00 +0000
std::string mailText(std::int64_t seconds);

// "now", "2 hours ago", "1 day from now"
std::string relativeText(const Instant& instant, const Instant& now);
std::string relativeText(double secondsAhead);

// "1 day", "2 days"
std::string counted(std::int64_t number, std::string_view unit);

}  // namespace quirn
