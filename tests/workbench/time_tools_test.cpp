// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/date_arithmetic.h"
#include "workbench/date_reader.h"
#include "workbench/date_text.h"
#include "workbench/reference_tools.h"
#include "workbench/timestamp_tool.h"
#include "workbench/tool_answers.h"

namespace quirn::tests {
namespace {

using platform::TimeZone;

std::string moment(std::string_view input, std::string_view zone = "America/New_York") {
  try {
    return momentInEveryForm(input, {1700000000, 0}, *TimeZone::named(zone));
  } catch (const TextToolError& error) {
    return "error: " + error.message();
  }
}

// By `date -u -d @1700003661`.
TEST(Timestamp, GivesEveryForm) {
  EXPECT_EQ(moment("1700003661"),
            "Epoch (seconds):      1700003661\n"
            "Epoch (milliseconds): 1700003661000\n"
            "ISO 8601 (UTC):       2023-11-14T23:14:21Z\n"
            "RFC 2822:             Tue, 14 Nov 2023 23:14:21 +0000\n"
            "Local (America/New_York): Tue, Nov 14, 2023 at 6:14:21 PM EST\n"
            "UTC:                  Tue, Nov 14, 2023 at 11:14:21 PM UTC\n"
            "Relative:             1 hour from now");
}

TEST(Timestamp, ReadsNumbersAndDates) {
  const struct {
    const char* loss;
    const char* input;
    const char* part;
  } rows[] = {
      {"the last second that is one", "253402300799", "ISO 8601 (UTC):       9999-12-31T23:59:59Z"},
      {"the first number that is milliseconds", "253402300800", "ISO 8601 (UTC):       1978-01-11T21:31:40.800Z"},
      {"halves are rounded away from zero", "253402300500000", "Epoch (seconds):      253402300500"},
      {"the second before the epoch", "-1", "ISO 8601 (UTC):       1969-12-31T23:59:59Z"},
      {"a half before the epoch", "1969-12-31T23:59:59.5Z", "Epoch (seconds):      -1\nEpoch (milliseconds): -500"},
      {"a number as large as it goes", "9223372036854775807", "ISO 8601 (UTC):       292278994-08-17T07:12:55.807Z"},
      {"as low as it goes", "-9223372036854775808", "Epoch (milliseconds): -9223372036854775808000"},
      {"a number beyond", "9223372036854775808",
       "error: Could not read \"9223372036854775808\" as a Unix epoch or date."},
      {"microseconds of a log", "2026-06-14T15:00:00.123456+05:30",
       "ISO 8601 (UTC):       2026-06-14T09:30:00.123456Z"},
      {"RFC 2822", "Sun, 14 Jun 2026 15:00:00 -0330", "Epoch (seconds):      1781461800"},
      {"without its weekday", "14 Jun 2026 15:00:00 +0000", "Epoch (seconds):      1781449200"},
      {"a header of mail", "Sun, 14 Jun 2026 15:00:00 +0000 (UTC)", "Epoch (seconds):      1781449200"},
      {"a header of HTTP", "Sun, 06 Nov 1994 08:49:37 GMT", "Epoch (seconds):      784111777"},  // RFC 9110, 5.6.7
      {"a date alone is of UTC", "\t2026-06-14\r\n", "Epoch (seconds):      1781395200"},
      {"a day that doesn't exist", "2026-02-29T00:00:00Z", "error: Could not read"},
      {"an hour that doesn't exist", "2026-02-28T24:00:00Z", "error: Could not read"},
      {"an offset that doesn't exist", "2026-02-28T23:00:00+2460", "error: Could not read"},
      {"a date with something after it", "2026-02-28T23:00:00Zulu", "error: Could not read"},
      {"no input", " \n", "error: Enter a Unix epoch or a date string."},
  };
  for (const auto& row : rows) EXPECT_NE(moment(row.input).find(row.part), std::string::npos) << row.loss;
  EXPECT_LT(moment(std::string(5'000'000, '7')).size(), 500U) << "a message is read by a person";
  EXPECT_TRUE(moment("\xFF\xFE").starts_with("error: Could not read \"\uFFFD\uFFFD\""));
}

TEST(Timestamp, TellsHowFarAwayItIs) {
  const struct {
    std::int64_t ahead;
    const char* text;
  } rows[] = {{0, "now"},
              {1, "1 second from now"},
              {-59, "59 seconds ago"},
              {-90, "2 minutes ago"},
              {89, "1 minute from now"},
              {3599, "60 minutes from now"},
              {-86399, "24 hours ago"},
              {129600, "2 days from now"}};
  for (const auto& row : rows) EXPECT_EQ(relativeText({row.ahead, 0}, {}), row.text);
  EXPECT_EQ(relativeText({0, 999'999'999}, {}), "now") << "less than a second";
}

// CLDR's short names in English.
TEST(DateText, NamesOffsetsAsAmericanEnglishDoes) {
  const struct {
    const char* zone;
    const char* name;
  } rows[] = {{"America/New_York", "EDT"},   {"Europe/London", "GMT+1"},
              {"Asia/Tokyo", "GMT+9"},       {"Asia/Kolkata", "GMT+5:30"},
              {"Asia/Shanghai", "GMT+8"},    {"America/St_Johns", "GMT-2:30"},
              {"Pacific/Honolulu", "HST"},   {"Etc/GMT+5", "GMT-5"},
              {"Atlantic/Reykjavik", "GMT"}, {"UTC", "UTC"}};
  for (const auto& row : rows) EXPECT_EQ(zonedTime(1720000000, *TimeZone::named(row.zone)).zone, row.name) << row.zone;
}

// Checked with `TZ=ZONE date -d 'TZ="America/New_York" ...'`.
TEST(TimeZoneTool, Converts) {
  expectAnswers(timeZoneTool(), {{"the table", "2026-06-14 15:00",
                                  "UTC: Sun, Jun 14, 2026 at 3:00:00 PM UTC\n"
                                  "→ America/New_York: Sun, Jun 14, 2026 at 11:00:00 AM EDT\n"
                                  "\n"
                                  "All zones (same instant):\n"
                                  "  UTC               2026-06-14 15:00 UTC\n"
                                  "  America/New_York  2026-06-14 11:00 EDT\n"
                                  "  Europe/London     2026-06-14 16:00 GMT+1\n"
                                  "  Asia/Tokyo        2026-06-15 00:00 GMT+9"}});
  const ToolSettings home = {{"from", "America/New_York"}, {"to", " zulu "}};
  expectParts(
      timeZoneTool(),
      {{"a day alone", "2026-01-14", "→ UTC: Wed, Jan 14, 2026 at 5:00:00 AM UTC", home},
       {"the hour that comes twice is its first", "2026-11-01 01:30:00", "1:30:00 AM EDT\n→ UTC: Sun, Nov 1", home},
       {"the hour that is skipped", "2026-03-08 02:30", "Sun, Mar 8, 2026 at 3:30:00 AM EDT", home},
       {"an offset of its own", "2026-01-14T00:00:00+09:00", "New_York: Tue, Jan 13, 2026 at 10:00:00 AM EST", home},
       {"what was mistyped", "2026-13-01",
        "error: Could not read \"2026-13-01\" as a datetime. Try \"yyyy-MM-dd HH:mm\" or ISO 8601."},
       {"which zone is wrong",
        "2026-01-14",
        "error: Unknown From timezone \"europe/berlin\".",
        {{"from", "europe/berlin"}}},
       {"the other one", "2026-01-14", "error: Unknown To timezone \"../UTC\".", {{"to", "../UTC"}}}});
}

// Additions by python3's datetime, or by hand where a month is too short.
TEST(DateMath, AddsAndSubtracts) {
  const auto set = [](const char* op, const char* amount, const char* unit) {
    return ToolSettings{{"op", op}, {"amount", amount}, {"unit", unit}};
  };
  expectAnswers(
      dateMathTool(),
      {{"days", "2026-06-14",
        "Base 2026-06-14 plus 30 days:\nISO:     2026-07-14\nDate:    Tuesday, July 14, 2026\nWeekday: Tuesday"},
       {"the way back", "2026-03-31",
        "Base 2026-03-31 minus 1 months:\nISO:     2026-02-28\n"
        "Date:    Saturday, February 28, 2026\nWeekday: Saturday",
        set("Subtract", "1", "months")},
       {"what is no date", "tomorrow", "error: Could not read \"tomorrow\" as a date. Try \"yyyy-MM-dd\" or ISO 8601."},
       {"no input", "", "error: Could not read \"\" as a date. Try \"yyyy-MM-dd\" or ISO 8601."}});
  expectParts(dateMathTool(), {{"the end of a month", "2026-01-31", "ISO:     2026-02-28\n", set("Add", "1", "months")},
                               {"of a leap year", "2024-01-31", "ISO:     2024-02-29\n", set("Add", "1", "months")},
                               {"the leap day", "2024-02-29", "ISO:     2025-02-28\n", set("Add", "1", "years")},
                               {"weeks", "2026-06-14", "ISO:     2026-08-23\n", set("Add", "10", "weeks")},
                               {"far ahead", "2026-06-14", "ISO:     5676-06-14\n", set("Add", "3650", "years")}});
  for (const char* unit : {"days", "weeks", "months", "years"}) {
    for (const char* amount : {"1000000000000000000", "-1000000000000000000", "-9223372036854775808"})
      EXPECT_EQ(answer(dateMathTool(), "2026-06-14", set("Add", amount, unit)),
                "error: That date calculation overflowed the calendar range.");
  }
}

TEST(DateMath, TellsTwoDatesApart) {
  expectAnswers(dateMathTool(),
                {{"the breakdown", "2024-01-31\n\n 2026-03-01 \n2030-01-01",
                  "Difference between the two dates:\n  Days:    760\n  Weeks:   108.57\n  Months:  25\n  Years:   2\n"
                  "  Human:   2 years, 1 month, 1 day"},
                 {"a month too short counts as whole", "2024-02-29\n2025-02-28",
                  "Difference between the two dates:\n  Days:    365\n  Weeks:   52.14\n  Months:  12\n  Years:   1\n  "
                  "Human:   1 year"},
                 {"the second before the first", "2026-06-14\n2026-01-01",
                  "Difference between the two dates:\n  Days:    -164\n  Weeks:   -23.43\n  Months:  -5\n  Years:   0\n"
                  "  Human:   -5 months, -13 days"},
                 {"which line is wrong", "x\n2026-01-01", "error: Could not read the first date \"x\"."},
                 {"the other", "2026-01-01\ny", "error: Could not read the second date \"y\"."}});
  expectParts(dateMathTool(), {{"no difference", "2026-06-14\n2026-06-14T12:00:00Z", "Human:   the same day"}});
}

}  // namespace
}  // namespace quirn::tests
