// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Dates and times as people and programs write them: ISO 8601, and RFC 2822 as in mail and HTTP.

#pragma once

#include <optional>
#include <string_view>

#include "platform/time_zone.h"
#include "workbench/instant.h"

namespace quirn {

// Reads the whole text, white space around it aside:
//   2026-06-14, 2026-06-14 15:00, 2026-06-14T15:00:00.25, and with a time "Z" or an offset after it;
//   Sun, 14 Jun 2026 15:00:00 +0200, the weekday or the offset's digits replaced by "GMT" as may be.
// Without an offset it is a time of `zone`; a date alone is its midnight.
std::optional<Instant> dateIn(std::string_view text, const platform::TimeZone& zone);

// The zone of the database with that name; "UTC", "GMT", "Z" and "Zulu", in either case, are UTC.
std::optional<platform::TimeZone> zoneIn(std::string_view name);

}  // namespace quirn
