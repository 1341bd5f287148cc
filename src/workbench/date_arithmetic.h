// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Adding to a date and telling two apart, by the calendar.

#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "platform/civil_time.h"

namespace quirn {

// `unit` is "days", "weeks", "months" or "years". A month too short for the day gives its last day.
// Nothing where the year would lie more than 99999 from year 0.
std::optional<platform::CivilTime> dateAfter(const platform::CivilTime& date, std::int64_t amount,
                                             std::string_view unit);

// Whole months, then whole days beyond them; all negative, or zero, if `end` is before `begin`.
struct CalendarDifference {
  std::int64_t totalDays = 0;
  std::int64_t months = 0;
  std::int64_t daysBeyondMonths = 0;
};

CalendarDifference calendarDifference(const platform::CivilTime& begin, const platform::CivilTime& end);

}  // namespace quirn
