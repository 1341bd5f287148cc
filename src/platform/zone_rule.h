// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The rule for all years to come that stands at the end of a zone file: a TZ string as POSIX
// (XBD 8.3) has it, with the hours of -167 to 167 that RFC 9636 adds.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quirn::platform {

// A stretch of time in which a zone's clocks differ from UTC by the same.
struct ZonePeriod {
  std::int64_t offsetSeconds = 0;  // east of Greenwich is positive
  std::string abbreviation;        // "CEST"; "+03" where people have none
  std::int64_t until = 0;          // the first instant after it; the highest if it never ends
};

class ZoneRule {
 public:
  // Nothing if the text isn't such a rule.
  static std::optional<ZoneRule> parsed(std::string_view text);

  ZonePeriod periodAt(std::int64_t instant) const;

 private:
  struct Clock {
    std::string abbreviation;
    std::int64_t offsetSeconds = 0;
  };
  // The day of a change, and the seconds after its midnight on the clock in force before it.
  struct Change {
    enum class Form { weekdayOfMonth, dayWithoutLeap, dayOfYear };
    Form form = Form::weekdayOfMonth;
    int month = 0;
    int week = 0;  // 5 is the last
    int weekday = 0;
    int day = 0;
    std::int64_t seconds = 7200;

    std::int64_t localSeconds(std::int64_t year) const;
    std::int64_t dayNumber(std::int64_t year) const;
  };
  struct Transition {
    std::int64_t instant = 0;
    bool toSummer = false;
  };
  class Reader;

  std::vector<Transition> transitionsAround(std::int64_t year) const;

  Clock standard_;
  std::optional<Clock> summer_;
  Change summerBegins_;
  Change summerEnds_;
};

}  // namespace quirn::platform
