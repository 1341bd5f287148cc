// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A moment, as the tools for dates and times hold it.

#pragma once

#include <cstdint>

namespace quirn {

struct Instant {
  std::int64_t seconds = 0;  // since 1970-01-01 00:00:00 UTC, rounded down
  int nanoseconds = 0;       // beyond these, 0 to 999'999'999

  bool operator==(const Instant&) const = default;
};

Instant currentInstant();

}  // namespace quirn
