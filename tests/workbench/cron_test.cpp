// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <chrono>

#include "platform/civil_time.h"
#include "workbench/cron_schedule.h"
#include "workbench/cron_tool.h"
#include "workbench/date_text.h"
#include "workbench/tool_answers.h"

namespace quirn::tests {
namespace {

using platform::TimeZone;

std::int64_t utc(std::int64_t year, int month, int day, int hour = 0, int minute = 0) {
  return platform::secondsSinceEpoch({year, month, day, hour, minute, 30});
}

std::string explained(std::string_view expression, std::int64_t now = utc(2026, 6, 14), const char* zone = "UTC") {
  try {
    return explainedCron(expression, now, *TimeZone::named(zone));
  } catch (const TextToolError& error) {
    return "error: " + error.message();
  }
}

std::vector<std::string> fireTimes(std::string_view expression, std::int64_t now, const char* zone, std::size_t count) {
  std::vector<std::string> texts;
  const TimeZone where = *TimeZone::named(zone);
  for (const std::int64_t time : nextFireTimes(CronSchedule::parsed(expression), now, where, count)) {
    const ZonedTime zoned = zonedTime(time, where);
    texts.push_back(minuteText(zoned.civil) + " " + zoned.zone);
  }
  return texts;
}

TEST(Cron, ListsTheNextTimes) {
  EXPECT_EQ(explained("*/30 9 * * 1-5", utc(2026, 6, 12, 9, 30), "America/New_York"),
            "At every 30 minutes of 9, on Monday-Friday.\n"
            "\n"
            "Next 10 fire times (EDT):\n"
            "   1. Fri 2026-06-12 09:00 EDT\n"
            "   2. Fri 2026-06-12 09:30 EDT\n"
            "   3. Mon 2026-06-15 09:00 EDT\n"
            "   4. Mon 2026-06-15 09:30 EDT\n"
            "   5. Tue 2026-06-16 09:00 EDT\n"
            "   6. Tue 2026-06-16 09:30 EDT\n"
            "   7. Wed 2026-06-17 09:00 EDT\n"
            "   8. Wed 2026-06-17 09:30 EDT\n"
            "   9. Thu 2026-06-18 09:00 EDT\n"
            "  10. Thu 2026-06-18 09:30 EDT");
  EXPECT_NE(explained("0 0 29 2 *").find("Next 1 fire time (UTC):\n   1. Tue 2028-02-29 00:00 UTC"), std::string::npos);
  EXPECT_TRUE(
      explained("0 0 31 2 *")
          .ends_with(
              "\n\nNo fire times found within the next 4 years (the expression may never match — e.g. Feb 30)."));
}

struct TimesRow {
  const char* loss;
  const char* expression;
  std::int64_t now;
  const char* zone;
  std::vector<std::string> expected;
};

// Days by `cal`; the changes of clocks by `zdump -v America/New_York`.
TEST(Cron, FiresWhenItShould) {
  const TimesRow rows[] = {
      {"not the current minute", "0 12 * * *", utc(2026, 6, 14, 12, 0), "UTC", {"2026-06-15 12:00 UTC"}},
      {"either kind of day where both are restricted",
       "0 12 1 * 1",
       utc(2026, 5, 30),
       "UTC",
       {"2026-06-01 12:00 UTC", "2026-06-08 12:00 UTC", "2026-06-15 12:00 UTC", "2026-06-22 12:00 UTC",
        "2026-06-29 12:00 UTC", "2026-07-01 12:00 UTC"}},
      {"Sunday as 7", "0 0 * * 7", utc(2026, 6, 15), "UTC", {"2026-06-21 00:00 UTC", "2026-06-28 00:00 UTC"}},
      {"a range that ends on Sunday",
       "0 0 * * 6-7",
       utc(2026, 6, 15),
       "UTC",
       {"2026-06-20 00:00 UTC", "2026-06-21 00:00 UTC"}},
      {"a step from a number to the end",
       "50/4 0 1 1 *",
       utc(2026, 6, 15),
       "UTC",
       {"2027-01-01 00:50 UTC", "2027-01-01 00:54 UTC", "2027-01-01 00:58 UTC"}},
      {"the leap day exactly four years on", "0 0 29 2 *", utc(2024, 2, 29), "UTC", {"2028-02-29 00:00 UTC"}},
      {"no time in the hour that is skipped",
       "30 2 * * *",
       utc(2026, 3, 7, 12),
       "America/New_York",
       {"2026-03-09 02:30 EDT", "2026-03-10 02:30 EDT"}},
      {"both in the hour that comes twice",
       "30 1 * * *",
       utc(2026, 10, 31, 12),
       "America/New_York",
       {"2026-11-01 01:30 EDT", "2026-11-01 01:30 EST", "2026-11-02 01:30 EST"}},
      {"an offset of half an hour", "0 0 * * *", utc(2026, 6, 14), "Asia/Kolkata", {"2026-06-15 00:00 GMT+5:30"}},
  };
  for (const TimesRow& row : rows)
    EXPECT_EQ(fireTimes(row.expression, row.now, row.zone, row.expected.size()), row.expected) << row.loss;
  EXPECT_TRUE(fireTimes("0 0 29 2 *", utc(2096, 3, 1), "UTC", 10).empty()) << "1900 and 2100 have no leap day";
}

TEST(Cron, ExplainsInWords) {
  const struct {
    const char* expression;
    const char* sentence;
  } rows[] = {{"* * * * *", "At every value of every value."},
              {"*/15 9-17 * * 1-5", "At every 15 minutes of 9-17, on Monday-Friday."},
              {"0,30 12 1,15 1,6-8 *", "At 0, 30 of 12, on 1, 15 of the month of January, June-August."},
              {"5/20 */2 * */3 7", "At every 20 minutes from 5 of every 2 hours of every 3 months, on Sunday."},
              {"0 12 1 * 1", "At 0 of 12, on 1 of the month, on Monday."}};
  for (const auto& row : rows) EXPECT_TRUE(explained(row.expression).starts_with(row.sentence)) << row.expression;
}

TEST(Cron, SaysWhatItCannotRead) {
  const struct {
    const char* expression;
    const char* message;
  } rows[] = {
      {"* * * *", "A cron expression needs exactly 5 fields: minute hour day-of-month month day-of-week. Got 4."},
      {"", "A cron expression needs exactly 5 fields: minute hour day-of-month month day-of-week. Got 0."},
      {"*/0 * * * *", "Invalid step \"/0\" in the minute field."},
      {"*/ * * * *", "Invalid step \"/\" in the minute field."},
      {"*/2/2 * * * *", "Invalid step \"/2/2\" in the minute field."},
      {"* */99999999999999999999 * * *", "Invalid step \"/99999999999999999999\" in the hour field."},
      {"* * 5-1 * *", "Invalid range \"5-1\" in the day-of-month field."},
      {"* * -5/2 * *", "Invalid range \"-5/2\" in the day-of-month field."},
      {"* * 0 * *", "Value out of range in the day-of-month field — allowed 1-31."},
      {"* * * 1-13 *", "Value out of range in the month field — allowed 1-12."},
      {"* * * JAN *", "Value out of range in the month field — allowed 1-12."},
      {"* * * * 8", "Value out of range in the day-of-week field — allowed 0-6."},
      {"0-9223372036854775807 * * * *", "Value out of range in the minute field — allowed 0-59."},
      {"* * * * ,", "The day-of-week field matched no values."}};
  for (const auto& row : rows) EXPECT_EQ(explained(row.expression), std::string("error: ") + row.message);
}

TEST(Cron, AnswersAtOnceWhateverIsAsked) {
  const auto begin = std::chrono::steady_clock::now();
  for (const char* expression : {"0 0 29 2 1", "0 0 30 2 *", "59 23 31 4 *", "*/1000000000000000000 0 31 12 *"}) {
    explained(expression);
    explained(expression, utc(2026, 6, 14), "America/New_York");
  }
  std::string list("0");
  for (int i = 0; i < 500'000; ++i) list += ",1-59/7";
  EXPECT_LT(explained(list + " * * * *").size(), 5000U);
  EXPECT_EQ(explained("* * * * *", std::int64_t{1} << 62), "error: Could not establish a starting time for the scan.");
  // Some thousand times what it takes, for machines under load and sanitizers.
  EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
}

}  // namespace
}  // namespace quirn::tests
