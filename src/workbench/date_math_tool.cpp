// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <limits>

#include "workbench/date_arithmetic.h"
#include "workbench/date_reader.h"
#include "workbench/date_text.h"
#include "workbench/reference_support.h"
#include "workbench/reference_tools.h"

namespace quirn {
namespace {

using platform::CivilTime;

constexpr std::int64_t defaultAmount = 30;

// All dates here are of UTC, those that are read and those that are written, so that no result
// depends on where the user is.
CivilTime dateOf(std::string_view line, std::string_view beforeLine, std::string_view afterLine) {
  const auto instant = dateIn(line, platform::TimeZone::utc());
  if (!instant) throw TextToolError(fmt::format("{} \"{}\"{}", beforeLine, excerpt(line), afterLine));
  return platform::civilTimeAt(instant->seconds);
}

std::string inWords(const CalendarDifference& difference) {
  std::vector<std::string> parts;
  const auto add = [&](std::int64_t number, std::string_view unit) {
    if (number != 0) parts.push_back(counted(number, unit));
  };
  add(difference.months / 12, "year");
  add(difference.months % 12, "month");
  add(difference.daysBeyondMonths, "day");
  return parts.empty() ? "the same day" : fmt::format("{}", fmt::join(parts, ", "));
}

std::string differenceBetween(std::string_view first, std::string_view second) {
  const CivilTime begin = dateOf(first, "Could not read the first date", ".");
  const CivilTime end = dateOf(second, "Could not read the second date", ".");
  const CalendarDifference difference = calendarDifference(begin, end);
  return fmt::format(
      "Difference between the two dates:\n"
      "  Days:    {}\n"
      "  Weeks:   {:.2f}\n"
      "  Months:  {}\n"
      "  Years:   {}\n"
      "  Human:   {}",
      difference.totalDays, static_cast<double>(difference.totalDays) / 7, difference.months, difference.months / 12,
      inWords(difference));
}

std::string dateBlock(const CivilTime& date) {
  const std::string_view weekday =
      weekdayName(platform::weekdayOf(platform::daysSinceEpoch(date.year, date.month, date.day)));
  return fmt::format("ISO:     {}\nDate:    {}, {} {}, {}\nWeekday: {}", dateText(date), weekday, monthName(date.month),
                     date.day, date.year, weekday);
}

std::string calculated(std::string_view input, const TextToolOptions& options) {
  const auto lines = trimmedLines(input);
  if (lines.size() >= 2) return differenceBetween(lines[0], lines[1]);
  const CivilTime base =
      dateOf(lines.empty() ? "" : lines.front(), "Could not read", " as a date. Try \"yyyy-MM-dd\" or ISO 8601.");
  const std::int64_t amount = options.integer("amount", defaultAmount);
  const std::string unit = options.text("unit", "days");
  const bool subtracts = options.text("op", "Add") == "Subtract";
  constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
  const auto result = amount == lowest ? std::nullopt : dateAfter(base, subtracts ? -amount : amount, unit);
  if (!result) throw TextToolError("That date calculation overflowed the calendar range.");
  return fmt::format("Base {} {} {} {}:\n{}", dateText(base), subtracts ? "minus" : "plus", amount, unit,
                     dateBlock(*result));
}

}  // namespace

const TextTool& dateMathTool() {
  static const TextTool tool{.id = "time.datemath",
                             .name = "Date Math",
                             .shortName = "datemath",
                             .icon = "calendar.badge.plus",
                             .category = OperationCategory::time,
                             .aliases = {"date math", "add days", "subtract days", "date diff", "days between"},
                             .blurb = "Add or subtract days/weeks/months/years from a date, or diff two dates.",
                             .inputPlaceholder = "2026-06-14   (or two dates on two lines to diff)",
                             .controls = {ChoiceControl{"op", "Operation", {"Add", "Subtract"}, "Add"},
                                          StepperControl{"amount", "Amount", 0, 3650, defaultAmount},
                                          ChoiceControl{"unit", "Unit", {"days", "weeks", "months", "years"}, "days"}},
                             .sampleInput = "2026-06-14",
                             .transform = calculated};
  return tool;
}

}  // namespace quirn
