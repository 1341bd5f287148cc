// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/time_zone.h"

#include <gtest/gtest.h>

#include "platform/civil_time.h"
#include "platform/zone_file.h"

namespace quirn::platform {
namespace {

std::int64_t secondsAt(std::int64_t year, int month, int day, int hour = 0, int minute = 0) {
  return secondsSinceEpoch({year, month, day, hour, minute, 0});
}

TEST(CivilTime, FollowsTheCalendarFarBeyondTheYearsOfTheStandardLibrary) {
  EXPECT_EQ(secondsAt(2000, 3, 1), 951868800);       // date -u -d 2000-03-01 +%s
  EXPECT_EQ(secondsAt(1, 1, 1), -62135596800);       // the same
  EXPECT_EQ(weekdayOf(daysSinceEpoch(1, 1, 1)), 1);  // a Monday, in ISO 8601's calendar
  for (const std::int64_t seconds : {std::int64_t{1} << 62, -(std::int64_t{1} << 62), std::int64_t{-1}}) {
    const CivilTime time = civilTimeAt(seconds);
    EXPECT_EQ(secondsSinceEpoch(time), seconds) << "a moment must come back from its date";
  }
  EXPECT_EQ(daysInMonth(1900, 2), 28) << "a century is no leap year";
  EXPECT_EQ(daysInMonth(2000, 2), 29) << "but each fourth is";
}

struct OffsetRow {
  const char* loss;
  const char* zone;
  std::int64_t instant;
  std::int64_t offset;
  const char* abbreviation;
};

// Offsets by `TZ=ZONE date -d @INSTANT '+%z %Z'`.
TEST(TimeZone, KnowsTheOffsetsOfTheDatabase) {
  const OffsetRow rows[] = {
      {"the last second before summer", "America/New_York", 1772953199, -18000, "EST"},
      {"the first second of summer", "America/New_York", 1772953200, -14400, "EDT"},
      {"a year that only the rule covers, in winter", "Europe/Berlin", 6311433600, 3600, "CET"},
      {"the same in summer", "Europe/Berlin", 6328800000, 7200, "CEST"},
      {"a southern summer, over the turn of the year", "Australia/Sydney", 6311433600, 39600, "AEDT"},
      {"half an hour of summer", "Australia/Lord_Howe", 1720000000, 37800, "+1030"},
      {"a zone without rules", "Asia/Kolkata", 1720000000, 19800, "IST"},
      {"a zone that has changed sides of the date line", "Pacific/Apia", 1325203200, -36000, "-10"},
      {"local mean time before there were zones", "America/New_York", -4000000000, -17762, "LMT"},
      {"UTC by its other names", "Etc/UTC", 0, 0, "UTC"},
  };
  for (const OffsetRow& row : rows) {
    const auto zone = TimeZone::named(row.zone);
    ASSERT_TRUE(zone) << row.zone << " is in every database";
    const ZonePeriod period = zone->periodAt(row.instant);
    EXPECT_EQ(period.offsetSeconds, row.offset) << row.loss;
    EXPECT_EQ(period.abbreviation, row.abbreviation) << row.loss;
    EXPECT_GT(period.until, row.instant) << row.loss;
  }
}

TEST(TimeZone, ReadsTimesThatComeTwiceOrNever) {
  const TimeZone zone = *TimeZone::named("America/New_York");
  // RFC 5545, 3.3.5, with its own examples of 2007.
  EXPECT_EQ(zone.instantOf(secondsAt(2007, 11, 4, 1, 30)), secondsAt(2007, 11, 4, 5, 30)) << "the first of two";
  EXPECT_EQ(zone.instantOf(secondsAt(2007, 3, 11, 2, 30)), secondsAt(2007, 3, 11, 7, 30)) << "the skipped hour";
  EXPECT_EQ(zone.instantOf(secondsAt(2007, 3, 11, 3, 0)), secondsAt(2007, 3, 11, 7, 0)) << "right after it";
  EXPECT_EQ(zone.instantOf(secondsAt(2007, 11, 4, 2, 0)), secondsAt(2007, 11, 4, 7, 0)) << "right after both";
}

TEST(TimeZone, TakesNoPathForAName) {
  for (const char* name : {"", "../UTC", "/etc/passwd", "Europe", "posix/UTC", "right/UTC", "localtime", "tzdata.zi",
                           "europe/berlin", "Europe/Berlin/", "Europe//Berlin/..", "Nowhere/Else"})
    EXPECT_FALSE(TimeZone::named(name)) << name;
  EXPECT_FALSE(TimeZone::named(std::string("UTC\0x", 5)));
  EXPECT_FALSE(TimeZone::named(std::string(1 << 20, 'a')));
}

TEST(TimeZone, FollowsTheVariableOfTheEnvironment) {
  for (const char* value : {"Asia/Tokyo", ":Asia/Tokyo", "/usr/share/zoneinfo/Asia/Tokyo"})
    EXPECT_EQ(TimeZone::ofEnvironment(value)->id(), "Asia/Tokyo") << value;
  EXPECT_EQ(TimeZone::ofEnvironment("")->id(), "UTC") << "as the C library has it";
  EXPECT_FALSE(TimeZone::ofEnvironment("bogus"));
  const auto berlin = TimeZone::ofEnvironment("CET-1CEST,M3.5.0,M10.5.0/3");
  EXPECT_EQ(berlin->periodAt(secondsAt(2026, 7, 1)).abbreviation, "CEST");
}

TEST(ZoneRule, ReadsEveryFormOfADay) {
  const struct {
    const char* rule;
    std::int64_t lastOfWinter;
  } rows[] = {
      {"AAA0BBB,M3.2.0,M11.1.0", secondsAt(2026, 3, 8, 2) - 1},
      {"AAA0BBB,J60/0,J300", secondsAt(2024, 3, 1) - 1},                   // the leap day is not counted
      {"AAA0BBB,60/0,300", secondsAt(2024, 3, 1) - 1},                     // it is, and days begin at 0
      {"<-02>2<-01>,M3.5.0/-1,M10.5.0/0", secondsAt(2026, 3, 29, 1) - 1},  // Greenland, RFC 9636, 3.3.1
  };
  for (const auto& row : rows) {
    const auto rule = ZoneRule::parsed(row.rule);
    ASSERT_TRUE(rule) << row.rule;
    EXPECT_NE(rule->periodAt(row.lastOfWinter).offsetSeconds, rule->periodAt(row.lastOfWinter + 1).offsetSeconds)
        << row.rule;
    EXPECT_EQ(rule->periodAt(row.lastOfWinter).until, row.lastOfWinter + 1) << row.rule;
  }
  for (const char* wrong : {"", "A", "AAA", "AAA0BBB", "AAA0BBB,M3.2.0", "AAA0BBB,M13.1.0,M11.1.0", "<AAA0", "AAA168",
                            "AAA0BBB,J0,J1", "AAA0BBB,M3.2.0,M11.1.0x"})
    EXPECT_FALSE(ZoneRule::parsed(wrong)) << wrong;
}

// Two types and one transition, at 0, in a file of version 2 with an empty first block.
std::string tinyZoneFile() {
  const auto counts = [](char transitions, char types, char characters) {
    std::string text("TZif2");
    text.append(15 + 24, '\0');
    text[20 + 15] = transitions;
    text[20 + 19] = types;
    text[20 + 23] = characters;
    return text;
  };
  std::string file = counts(0, 0, 0) + counts(1, 2, 8);
  file.append(8, '\0');                        // the transition
  file += '\1';                                // to the second type
  file += std::string("\0\0\0\0\0\0", 6);      // 0, "AAA"
  file += std::string("\0\0\x0E\x10\1\4", 6);  // 3600, "BBB"
  return file + std::string("AAA\0BBB\0", 8) + "\n\n";
}

TEST(ZoneFile, RefusesWhatIsNotWhole) {
  const std::string bytes = tinyZoneFile();
  const auto file = ZoneFile::parsed(bytes);
  ASSERT_TRUE(file);
  EXPECT_EQ(file->periodAt(-1).abbreviation, "AAA");
  EXPECT_EQ(file->periodAt(0).offsetSeconds, 3600);
  for (std::size_t length = 0; length < bytes.size(); ++length)
    EXPECT_FALSE(ZoneFile::parsed(bytes.substr(0, length))) << "cut after " << length;
  for (std::size_t at = 0; at < bytes.size(); ++at) {
    std::string damaged = bytes;
    damaged[at] = '\xFF';
    if (const auto parsed = ZoneFile::parsed(damaged)) (void)parsed->periodAt(0);  // must only not crash
  }
}

}  // namespace
}  // namespace quirn::platform
