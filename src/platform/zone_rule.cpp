// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/zone_rule.h"

#include <algorithm>
#include <charconv>
#include <limits>

#include "platform/civil_time.h"

namespace quirn::platform {
namespace {

constexpr std::int64_t never = std::numeric_limits<std::int64_t>::max();

bool isLetter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool isNamePart(char character) {
  return isLetter(character) || (character >= '0' && character <= '9') || character == '+' || character == '-';
}

}  // namespace

class ZoneRule::Reader {
 public:
  explicit Reader(std::string_view text) : rest_(text) {}

  bool readRule(ZoneRule& rule) {
    if (!readName(rule.standard_.abbreviation) || !readOffset(rule.standard_)) return false;
    if (rest_.empty()) return true;
    Clock summer{"", rule.standard_.offsetSeconds + 3600};
    if (!readName(summer.abbreviation)) return false;
    if (!rest_.starts_with(',') && !readOffset(summer)) return false;
    rule.summer_ = summer;
    return readChange(rule.summerBegins_) && readChange(rule.summerEnds_) && rest_.empty();
  }

 private:
  bool take(char expected) {
    if (!rest_.starts_with(expected)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  bool readName(std::string& name) {
    const bool quoted = take('<');
    const auto end = std::ranges::find_if_not(rest_, quoted ? isNamePart : isLetter);
    name.assign(rest_.begin(), end);
    rest_.remove_prefix(name.size());
    return name.size() >= 3 && (!quoted || take('>'));
  }

  bool readNumber(int lowest, int highest, int& value) {
    const auto [end, error] = std::from_chars(rest_.data(), rest_.data() + rest_.size(), value);
    if (error != std::errc() || rest_.starts_with('-')) return false;
    rest_.remove_prefix(static_cast<std::size_t>(end - rest_.data()));
    return value >= lowest && value <= highest;
  }

  // [+-]h[:m[:s]]
  bool readSeconds(std::int64_t& seconds) {
    const bool negative = take('-');
    if (!negative) take('+');
    int hours = 0, minutes = 0, rest = 0;
    if (!readNumber(0, 167, hours)) return false;
    if (take(':') && !readNumber(0, 59, minutes)) return false;
    if (take(':') && !readNumber(0, 59, rest)) return false;
    const std::int64_t size = hours * 3600 + minutes * 60 + rest;
    seconds = negative ? -size : size;
    return true;
  }

  // POSIX counts westwards.
  bool readOffset(Clock& clock) {
    std::int64_t west = 0;
    if (!readSeconds(west)) return false;
    clock.offsetSeconds = -west;
    return true;
  }

  bool readChange(Change& change) {
    return take(',') && readDay(change) && (!take('/') || readSeconds(change.seconds));
  }

  bool readDay(Change& change) {
    if (take('M')) {
      return readNumber(1, 12, change.month) && take('.') && readNumber(1, 5, change.week) && take('.') &&
             readNumber(0, 6, change.weekday);
    }
    const bool withoutLeap = take('J');
    change.form = withoutLeap ? Change::Form::dayWithoutLeap : Change::Form::dayOfYear;
    return readNumber(withoutLeap ? 1 : 0, 365, change.day);
  }

  std::string_view rest_;
};

std::optional<ZoneRule> ZoneRule::parsed(std::string_view text) {
  ZoneRule rule;
  if (!Reader(text).readRule(rule)) return std::nullopt;
  return rule;
}

std::int64_t ZoneRule::Change::dayNumber(std::int64_t year) const {
  const std::int64_t newYear = daysSinceEpoch(year, 1, 1);
  if (form == Form::dayOfYear) return newYear + day;
  if (form == Form::dayWithoutLeap) return newYear + day - (isLeapYear(year) && day > 59 ? 0 : 1);
  const std::int64_t first = daysSinceEpoch(year, month, 1);
  const int untilWeekday = (weekday - weekdayOf(first) + 7) % 7;
  const int dayOfMonth = untilWeekday + 7 * (week - 1);
  return first + (dayOfMonth < daysInMonth(year, month) ? dayOfMonth : dayOfMonth - 7);
}

std::int64_t ZoneRule::Change::localSeconds(std::int64_t year) const {
  return dayNumber(year) * secondsPerDay + seconds;
}

std::vector<ZoneRule::Transition> ZoneRule::transitionsAround(std::int64_t year) const {
  std::vector<Transition> transitions;
  for (std::int64_t near = year - 1; near <= year + 1; ++near) {
    transitions.push_back({summerBegins_.localSeconds(near) - standard_.offsetSeconds, true});
    transitions.push_back({summerEnds_.localSeconds(near) - summer_->offsetSeconds, false});
  }
  // Stable: where summer ends in the moment in which that of the next year begins, it goes on.
  std::ranges::stable_sort(transitions, {}, &Transition::instant);
  return transitions;
}

ZonePeriod ZoneRule::periodAt(std::int64_t instant) const {
  if (!summer_) return {standard_.offsetSeconds, standard_.abbreviation, never};
  const auto transitions = transitionsAround(civilTimeAt(instant).year);
  const auto next = std::ranges::upper_bound(transitions, instant, {}, &Transition::instant);
  const bool isSummer = next != transitions.begin() && std::prev(next)->toSummer;
  const Clock& clock = isSummer ? *summer_ : standard_;
  return {clock.offsetSeconds, clock.abbreviation, next == transitions.end() ? never : next->instant};
}

}  // namespace quirn::platform
