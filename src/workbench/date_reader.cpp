// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/date_reader.h"

#include <algorithm>
#include <array>

#include "core/input_file.h"
#include "platform/civil_time.h"
#include "platform/text.h"
#include "workbench/date_text.h"
#include "workbench/reference_support.h"

namespace quirn {
namespace {

using platform::CivilTime;

struct WrittenTime {
  CivilTime civil;
  int nanoseconds = 0;
  std::optional<std::int64_t> offsetSeconds;

  bool exists() const {
    return civil.month >= 1 && civil.month <= 12 && civil.day >= 1 &&
           civil.day <= platform::daysInMonth(civil.year, civil.month) && civil.hour < 24 && civil.minute < 60 &&
           civil.second < 60;
  }
};

class DateReader {
 public:
  explicit DateReader(std::string_view text) : rest_(text) {}

  std::optional<WrittenTime> readIso() {
    if (!readNumber(4, 4, year_) || !take('-') || !readNumber(1, 2, time_.civil.month) || !take('-') ||
        !readNumber(1, 2, time_.civil.day))
      return std::nullopt;
    if (rest_.empty()) return finished();
    if (!take('T') && !take('t') && !takeBlanks()) return std::nullopt;
    if (!readClock() || !readFraction()) return std::nullopt;
    takeBlanks();
    if (!rest_.empty() && !readOffset()) return std::nullopt;
    return finished();
  }

  std::optional<WrittenTime> readMailDate() {
    if (rest_.find(',') != std::string_view::npos && !readWeekday()) return std::nullopt;
    if (!readNumber(1, 2, time_.civil.day) || !takeBlanks() || !readMonth() || !takeBlanks() ||
        !readNumber(4, 4, year_) || !takeBlanks() || !readClock() || !takeBlanks() || !(readOffset() || readZoneName()))
      return std::nullopt;
    takeBlanks();
    if (rest_.starts_with('(') && rest_.ends_with(')')) rest_ = {};
    return finished();
  }

 private:
  std::optional<WrittenTime> finished() {
    time_.civil.year = year_;
    if (!rest_.empty() || !time_.exists()) return std::nullopt;
    return time_;
  }

  bool take(char expected) {
    if (!rest_.starts_with(expected)) return false;
    rest_.remove_prefix(1);
    return true;
  }

  bool takeBlanks() {
    const std::size_t before = rest_.size();
    rest_.remove_prefix(std::min(rest_.find_first_not_of(' '), rest_.size()));
    return rest_.size() != before;
  }

  std::string_view takeDigits() {
    const std::string_view digits = rest_.substr(0, rest_.find_first_not_of("0123456789"));
    rest_.remove_prefix(digits.size());
    return digits;
  }

  bool readNumber(std::size_t fewest, std::size_t most, int& value) {
    const std::string_view digits = takeDigits();
    if (digits.size() < fewest || digits.size() > most) return false;
    value = static_cast<int>(*integerIn(digits));
    return true;
  }

  // 15:00 or 15:00:00
  bool readClock() {
    if (!readNumber(1, 2, time_.civil.hour) || !take(':') || !readNumber(2, 2, time_.civil.minute)) return false;
    return !take(':') || readNumber(2, 2, time_.civil.second);
  }

  bool readFraction() {
    if (!take('.') && !take(',')) return true;
    std::string digits(takeDigits());
    if (digits.empty()) return false;
    digits.resize(9, '0');
    time_.nanoseconds = static_cast<int>(*integerIn(digits));
    return true;
  }

  // Z, +02, +0200 or +02:00
  bool readOffset() {
    time_.offsetSeconds = 0;
    if (take('Z') || take('z')) return true;
    const int sign = rest_.starts_with('-') ? -1 : 1;
    if (!take('-') && !take('+')) return false;
    std::string digits(takeDigits());
    if (digits.size() == 2) digits += take(':') ? takeDigits() : "00";
    if (digits.size() != 4) return false;
    const int number = static_cast<int>(*integerIn(digits));
    time_.offsetSeconds = sign * (number / 100 * 3600 + number % 100 * 60);
    return number / 100 < 24 && number % 100 < 60;
  }

  // The names that RFC 2822, 4.3 keeps from older mail.
  bool readZoneName() {
    struct NamedOffset {
      std::string_view name;
      int hours;
    };
    constexpr auto offsets = std::to_array<NamedOffset>({{"GMT", 0},
                                                         {"UTC", 0},
                                                         {"UT", 0},
                                                         {"EST", -5},
                                                         {"EDT", -4},
                                                         {"CST", -6},
                                                         {"CDT", -5},
                                                         {"MST", -7},
                                                         {"MDT", -6},
                                                         {"PST", -8},
                                                         {"PDT", -7}});
    const auto named =
        std::ranges::find_if(offsets, [&](const NamedOffset& offset) { return rest_.starts_with(offset.name); });
    if (named == offsets.end()) return false;
    rest_.remove_prefix(named->name.size());
    time_.offsetSeconds = named->hours * 3600;
    return true;
  }

  bool readMonth() {
    for (int month = 1; month <= 12; ++month) {
      if (!takeWord(monthName(month).substr(0, 3))) continue;
      time_.civil.month = month;
      return true;
    }
    return false;
  }

  // Of another day than the date it is let pass, as mail programs do.
  bool readWeekday() {
    for (int weekday = 0; weekday < 7; ++weekday) {
      if (!takeWord(weekdayName(weekday).substr(0, 3))) continue;
      if (!take(',')) return false;
      takeBlanks();
      return true;
    }
    return false;
  }

  bool takeWord(std::string_view word) {
    if (lowerCased(rest_.substr(0, word.size())) != lowerCased(word)) return false;
    rest_.remove_prefix(word.size());
    return true;
  }

  std::string_view rest_;
  WrittenTime time_;
  int year_ = 0;
};

}  // namespace

std::optional<Instant> dateIn(std::string_view text, const platform::TimeZone& zone) {
  text = platform::trimmed(text);
  auto written = DateReader(text).readIso();
  if (!written) written = DateReader(text).readMailDate();
  if (!written) return std::nullopt;
  const std::int64_t local = platform::secondsSinceEpoch(written->civil);
  const std::int64_t instant = written->offsetSeconds ? local - *written->offsetSeconds : zone.instantOf(local);
  return Instant{instant, written->nanoseconds};
}

std::optional<platform::TimeZone> zoneIn(std::string_view name) {
  constexpr std::array<std::string_view, 4> utcNames = {"UTC", "GMT", "Z", "ZULU"};
  name = platform::trimmed(name);
  if (std::ranges::find(utcNames, upperCased(name)) != utcNames.end()) return platform::TimeZone::utc();
  return platform::TimeZone::named(name);
}

}  // namespace quirn
