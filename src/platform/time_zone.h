// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The time zones of the IANA database, as the system keeps it.
//
// The files are read here, not through ICU or the C library. The system's database is kept up to
// date, while ICU carries one of its own that is as old as ICU (its 2022e beside the system's 2025b)
// and costs every start of the program half a millisecond; the C library knows one zone at a time,
// for the whole process.

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/zone_rule.h"

namespace quirn::platform {

class ZoneFile;

// A value, cheap to copy; any thread. Instants are seconds since 1970-01-01 00:00:00 UTC.
class TimeZone {
 public:
  static const TimeZone& utc();

  // By its identifier in the database, "Europe/Berlin", in the case that is written there; nothing
  // if there is none.
  static std::optional<TimeZone> named(std::string_view id);

  // From a value of the variable TZ: an identifier, a path to its file, a rule as in POSIX such as
  // "CET-1CEST,M3.5.0,M10.5.0/3", or nothing for UTC.
  static std::optional<TimeZone> ofEnvironment(std::string_view value);

  // That of the environment (TZ), else that of the machine, else UTC.
  static TimeZone current();

  const std::string& id() const { return id_; }

  ZonePeriod periodAt(std::int64_t instant) const;

  // The instant at which clocks show `localSeconds`, counted as if they were UTC, in years 0 to
  // 9999. As in RFC 5545, 3.3.5: a time that comes twice means the first, and one that is skipped
  // is read with the offset before the gap, so that 02:30 becomes 03:30.
  std::int64_t instantOf(std::int64_t localSeconds) const;

 private:
  TimeZone(std::string id, std::shared_ptr<const ZoneFile> file);

  std::string id_;
  std::shared_ptr<const ZoneFile> file_;  // null: UTC
};

}  // namespace quirn::platform
