// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Dates as ZIP has them from MS-DOS: the clock of a time zone that is not named, from 1980 to 2107, in steps of two
// seconds.

#pragma once

#include <chrono>
#include <cstdint>

#include "platform/time_zone.h"

namespace quirn {

struct DosTime {
  std::uint16_t date = 0;  // (year - 1980) << 9 | month << 5 | day
  std::uint16_t time = 0;  // hour << 11 | minute << 5 | second / 2

  bool operator==(const DosTime&) const = default;
};

// An earlier year is written as 1980, a later one as 2107.
DosTime dosTimeOf(std::chrono::sys_seconds instant, const platform::TimeZone& zone);

// The epoch for what is no day or time of the calendar.
std::chrono::sys_seconds instantOf(DosTime time, const platform::TimeZone& zone);

}  // namespace quirn
