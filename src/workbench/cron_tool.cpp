// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/cron_tool.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "workbench/cron_schedule.h"
#include "workbench/date_text.h"
#include "workbench/instant.h"
#include "workbench/reference_support.h"
#include "workbench/reference_tools.h"

namespace quirn {
namespace {

constexpr std::size_t shownFireTimes = 10;

using NameOfValue = std::string (*)(std::int64_t value);

std::string plainNumber(std::int64_t value) {
  return std::to_string(value);
}

std::string nameOfMonth(std::int64_t value) {
  return std::string(monthName(static_cast<int>(value)));
}

std::string nameOfWeekday(std::int64_t value) {
  return std::string(weekdayName(static_cast<int>(value % 7)));
}

// "9", "9-17" or "*" with each number named; the schedule was parsed, so they are in range.
std::string namedRange(std::string_view range, NameOfValue name) {
  std::vector<std::string> ends;
  for (const std::string_view end : splitAt(range, '-')) {
    const auto value = integerIn(end);
    ends.push_back(value ? name(*value) : "every value");
  }
  return fmt::format("{}", fmt::join(ends, "-"));
}

std::string itemText(std::string_view item, std::string_view unit, NameOfValue name) {
  const std::size_t slash = item.find('/');
  const std::string_view base = item.substr(0, slash);
  if (slash == std::string_view::npos) return namedRange(base, name);
  std::string step = "every " + counted(*integerIn(item.substr(slash + 1)), unit);
  if (base == "*") return step;
  return fmt::format("{} from {}", step, namedRange(base, name));
}

std::string fieldText(const CronField& field, std::string_view unit, NameOfValue name) {
  constexpr std::size_t mostItems = 60;  // as many values as any field has
  std::vector<std::string> texts;
  for (const std::string_view item : splitAt(field.text, ',')) {
    if (item.empty()) continue;
    if (texts.size() == mostItems) {
      texts.emplace_back("…");
      break;
    }
    texts.push_back(itemText(item, unit, name));
  }
  return fmt::format("{}", fmt::join(texts, ", "));
}

std::string explanation(const CronSchedule& schedule) {
  std::string text = fmt::format("At {} of {}", fieldText(schedule.minute, "minute", plainNumber),
                                 fieldText(schedule.hour, "hour", plainNumber));
  if (!schedule.dayOfMonth.isAny)
    text += fmt::format(", on {} of the month", fieldText(schedule.dayOfMonth, "day", plainNumber));
  if (!schedule.month.isAny) text += " of " + fieldText(schedule.month, "month", nameOfMonth);
  if (!schedule.dayOfWeek.isAny) text += ", on " + fieldText(schedule.dayOfWeek, "day", nameOfWeekday);
  return text + ".";
}

std::string fireTimeLine(std::size_t index, std::int64_t fireTime, const platform::TimeZone& zone) {
  const ZonedTime time = zonedTime(fireTime, zone);
  return fmt::format("\n  {:2}. {:.3} {} {}", index, weekdayName(time.weekday), minuteText(time.civil), time.zone);
}

// Outside the years 1 to 9999 the clock of the machine is surely wrong.
bool canStartAt(std::int64_t now) {
  constexpr std::int64_t firstYear = -62135596800;
  constexpr std::int64_t beyondLastYear = 253402300800;
  return now >= firstYear && now < beyondLastYear;
}

}  // namespace

std::string explainedCron(std::string_view expression, std::int64_t now, const platform::TimeZone& zone) {
  const CronSchedule schedule = CronSchedule::parsed(expression);
  if (!canStartAt(now)) throw TextToolError("Could not establish a starting time for the scan.");
  const auto fireTimes = nextFireTimes(schedule, now, zone, shownFireTimes);
  std::string text = explanation(schedule) + "\n\n";
  if (fireTimes.empty()) {
    return text +
           "No fire times found within the next 4 years (the expression may never match — e.g. "
           "Feb 30).";
  }
  text += fmt::format("Next {} ({}):", counted(std::ssize(fireTimes), "fire time"), zonedTime(now, zone).zone);
  for (std::size_t i = 0; i < fireTimes.size(); ++i) text += fireTimeLine(i + 1, fireTimes[i], zone);
  return text;
}

const TextTool& cronTool() {
  static const TextTool tool{.id = "time.cron",
                             .name = "Cron Explainer",
                             .shortName = "cron",
                             .icon = "timer",
                             .category = OperationCategory::time,
                             .aliases = {"cron", "crontab", "schedule", "next fire", "cron expression"},
                             .blurb = "Explain a 5-field cron expression and list its next 10 fire times.",
                             .inputPlaceholder = "*/15 9-17 * * 1-5",
                             .sampleInput = "*/15 9-17 * * 1-5",
                             .transform = [](std::string_view input, const TextToolOptions& /*options*/) {
                               return explainedCron(input, currentInstant().seconds, platform::TimeZone::current());
                             }};
  return tool;
}

}  // namespace quirn
