// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/cron_schedule.h"

#include <fmt/format.h>

#include <algorithm>

#include "workbench/reference_support.h"
#include "workbench/text_tool.h"

namespace quirn {
namespace {

using platform::secondsPerDay;

constexpr std::int64_t secondsPerHour = 3600;

struct FieldForm {
  std::string_view name;
  std::int64_t lowest;
  std::int64_t highest;
};

constexpr FieldForm minuteForm{"minute", 0, 59};
constexpr FieldForm hourForm{"hour", 0, 23};
constexpr FieldForm dayOfMonthForm{"day-of-month", 1, 31};
constexpr FieldForm monthForm{"month", 1, 12};
constexpr FieldForm dayOfWeekForm{"day-of-week", 0, 6};

// Sunday in its second form.
constexpr std::int64_t seventhWeekday = 7;

class FieldReader {
 public:
  explicit FieldReader(const FieldForm& form) : form_(form) {}

  CronField read(std::string_view text) {
    field_.text = text;
    field_.isAny = text == "*";
    for (const std::string_view item : splitAt(text, ','))
      if (!item.empty()) addItem(item);
    if (field_.allowed.none()) throw TextToolError(fmt::format("The {} field matched no values.", form_.name));
    return std::move(field_);
  }

 private:
  struct Range {
    std::int64_t first;
    std::int64_t last;
  };

  void addItem(std::string_view item) {
    const std::size_t slash = item.find('/');
    const bool hasStep = slash != std::string_view::npos;
    const std::int64_t step = hasStep ? stepIn(item.substr(slash + 1)) : 1;
    const Range range = rangeIn(item.substr(0, slash), item, hasStep);
    for (std::int64_t value = range.first; value <= range.last; value += step) {
      field_.allowed.set(static_cast<std::size_t>(isWeekday() ? value % 7 : value));
      if (step > range.last - value) return;  // and no sum can overflow
    }
  }

  std::int64_t stepIn(std::string_view text) const {
    const auto step = isDigits(text) ? integerIn(text) : std::nullopt;
    if (!step || *step == 0) {
      throw TextToolError(fmt::format("Invalid step \"/{}\" in the {} field.", excerpt(text), form_.name));
    }
    return *step;
  }

  // "*", "9-17", or "9", which with a step goes on to the end.
  Range rangeIn(std::string_view base, std::string_view item, bool hasStep) const {
    if (base == "*") return {form_.lowest, form_.highest};
    const std::size_t dash = base.find('-');
    if (dash == std::string_view::npos) {
      const std::int64_t first = checked(integerIn(base));
      return {first, hasStep ? std::max(first, form_.highest) : first};
    }
    const auto first = integerIn(base.substr(0, dash));
    const auto last = integerIn(base.substr(dash + 1));
    if (!first || !last || *first > *last) {
      throw TextToolError(fmt::format("Invalid range \"{}\" in the {} field.", excerpt(item), form_.name));
    }
    return {checked(first), checked(last)};
  }

  std::int64_t checked(std::optional<std::int64_t> value) const {
    const std::int64_t highest = isWeekday() ? seventhWeekday : form_.highest;
    if (value && *value >= form_.lowest && *value <= highest) return *value;
    throw TextToolError(
        fmt::format("Value out of range in the {} field — allowed {}-{}.", form_.name, form_.lowest, form_.highest));
  }

  bool isWeekday() const { return form_.name == dayOfWeekForm.name; }

  const FieldForm& form_;
  CronField field_;
};

bool allows(const CronField& field, int value) {
  return field.allowed.test(static_cast<std::size_t>(value));
}

// Collects within stretches of one offset to UTC, in which local time runs as evenly as that of a
// clock that is never changed; a month, a day or an hour that can't match is passed in one step.
class FireTimeSearch {
 public:
  FireTimeSearch(const CronSchedule& schedule, std::size_t count) : schedule_(schedule), count_(count) {}

  // Local seconds, `end` being beyond the last.
  void collect(std::int64_t begin, std::int64_t end, std::int64_t offset) {
    std::int64_t local = -platform::floorDivided(-begin, 60) * 60;
    while (local < end && !isFull()) {
      const std::int64_t next = firstCandidateAt(local);
      if (next == local) {
        fireTimes_.push_back(local - offset);
        local += 60;
      } else {
        local = next;
      }
    }
  }

  bool isFull() const { return fireTimes_.size() >= count_; }
  std::vector<std::int64_t> take() { return std::move(fireTimes_); }

 private:
  // The same minute if it matches, else a later one before which none does.
  std::int64_t firstCandidateAt(std::int64_t local) const {
    const platform::CivilTime time = platform::civilTimeAt(local);
    const std::int64_t day = platform::floorDivided(local, secondsPerDay);
    const std::int64_t midnight = day * secondsPerDay;
    if (!allows(schedule_.month, time.month)) {
      const int rest = platform::daysInMonth(time.year, time.month) - time.day;
      return midnight + (rest + 1) * secondsPerDay;
    }
    if (!schedule_.allowsDay(time, platform::weekdayOf(day))) return midnight + secondsPerDay;
    if (!allows(schedule_.hour, time.hour)) return midnight + (time.hour + 1) * secondsPerHour;
    return allows(schedule_.minute, time.minute) ? local : local + 60;
  }

  const CronSchedule& schedule_;
  std::size_t count_;
  std::vector<std::int64_t> fireTimes_;
};

std::int64_t fourYearsAfter(std::int64_t local) {
  platform::CivilTime time = platform::civilTimeAt(local);
  time.year += 4;
  time.day = std::min(time.day, platform::daysInMonth(time.year, time.month));
  return platform::secondsSinceEpoch(time);
}

}  // namespace

CronSchedule CronSchedule::parsed(std::string_view expression) {
  const auto fields = words(expression);
  if (fields.size() != 5) {
    throw TextToolError(
        fmt::format("A cron expression needs exactly 5 fields: minute hour day-of-month month "
                    "day-of-week. Got {}.",
                    fields.size()));
  }
  return {.minute = FieldReader(minuteForm).read(fields[0]),
          .hour = FieldReader(hourForm).read(fields[1]),
          .dayOfMonth = FieldReader(dayOfMonthForm).read(fields[2]),
          .month = FieldReader(monthForm).read(fields[3]),
          .dayOfWeek = FieldReader(dayOfWeekForm).read(fields[4])};
}

bool CronSchedule::allowsDay(const platform::CivilTime& time, int weekday) const {
  const bool ofMonth = allows(dayOfMonth, time.day);
  const bool ofWeek = allows(dayOfWeek, weekday);
  return dayOfMonth.isAny || dayOfWeek.isAny ? ofMonth && ofWeek : ofMonth || ofWeek;
}

std::vector<std::int64_t> nextFireTimes(const CronSchedule& schedule, std::int64_t now, const platform::TimeZone& zone,
                                        std::size_t count) {
  platform::ZonePeriod period = zone.periodAt(now);
  const std::int64_t localNow = now + period.offsetSeconds;
  const std::int64_t currentMinute = platform::floorDivided(localNow, 60) * 60;
  const std::int64_t lastLocal = fourYearsAfter(currentMinute);
  std::int64_t begin = currentMinute + 60 - period.offsetSeconds;
  FireTimeSearch search(schedule, count);
  while (!search.isFull()) {
    period = zone.periodAt(begin);
    const std::int64_t offset = period.offsetSeconds;
    const bool endsBefore = period.until <= lastLocal - offset;
    search.collect(begin + offset, endsBefore ? period.until + offset : lastLocal + 1, offset);
    if (!endsBefore) break;
    begin = period.until;
  }
  return search.take();
}

}  // namespace quirn
