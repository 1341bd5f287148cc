// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/zone_file.h"

#include <algorithm>
#include <limits>

namespace quirn::platform {

// As they stand in a header, in its order.
struct ZoneFile::Counts {
  std::size_t utcMarks = 0;
  std::size_t standardMarks = 0;
  std::size_t leapSeconds = 0;
  std::size_t transitions = 0;
  std::size_t types = 0;
  std::size_t characters = 0;
};

class ZoneFile::Reader {
 public:
  explicit Reader(std::string_view bytes) : rest_(bytes) {}

  bool readFile(ZoneFile& file) {
    Counts counts;
    if (!readHeader(counts)) return false;
    // The first block says the same with 32 bits.
    take(counts.transitions * 5 + counts.types * 6 + counts.characters + counts.leapSeconds * 8 + counts.standardMarks +
         counts.utcMarks);
    if (!readHeader(counts) || !readBlock(counts, file)) return false;
    return readFooter(file);
  }

 private:
  // Shorter than asked for at the end, and what is read from it after that is nothing.
  std::string_view take(std::size_t length) {
    whole_ = whole_ && length <= rest_.size();
    const std::string_view taken = rest_.substr(0, length);
    rest_.remove_prefix(taken.size());
    return taken;
  }

  std::uint64_t takeNumber(std::size_t length) {
    std::uint64_t value = 0;
    for (const char byte : take(length)) value = value << 8 | static_cast<unsigned char>(byte);
    return value;
  }

  bool readHeader(Counts& counts) {
    if (take(4) != "TZif" || take(1) < "2") return false;
    take(15);
    for (std::size_t* count : {&counts.utcMarks, &counts.standardMarks, &counts.leapSeconds, &counts.transitions,
                               &counts.types, &counts.characters}) {
      *count = takeNumber(4);
      if (*count > rest_.size()) return false;
    }
    return whole_;
  }

  bool readBlock(const Counts& counts, ZoneFile& file) {
    for (std::size_t i = 0; i < counts.transitions && whole_; ++i)
      file.transitions_.push_back(static_cast<std::int64_t>(takeNumber(8)));
    for (const char type : take(counts.transitions)) file.typeAfter_.push_back(static_cast<std::uint8_t>(type));
    const std::string_view types = take(counts.types * 6);
    const std::string_view names = take(counts.characters);
    take(counts.leapSeconds * 12 + counts.standardMarks + counts.utcMarks);
    return whole_ && std::ranges::is_sorted(file.transitions_) && readTypes(types, names, file);
  }

  // Each: 4 bytes of offset, 1 whether it is summer time, 1 where its abbreviation begins.
  static bool readTypes(std::string_view types, std::string_view names, ZoneFile& file) {
    for (Reader type(types); !type.rest_.empty();) {
      const auto offset = static_cast<std::int32_t>(type.takeNumber(4));
      type.take(1);
      const std::size_t begin = type.takeNumber(1);
      if (begin > names.size()) return false;
      const std::string_view name = names.substr(begin, names.find('\0', begin) - begin);
      file.types_.push_back({offset, std::string(name), std::numeric_limits<std::int64_t>::max()});
    }
    return !file.types_.empty() &&
           std::ranges::all_of(file.typeAfter_, [&](std::uint8_t type) { return type < file.types_.size(); });
  }

  // Between line feeds, and empty where no rule is known.
  bool readFooter(ZoneFile& file) {
    if (rest_.size() < 2 || rest_.front() != '\n' || rest_.back() != '\n') return false;
    const std::string_view text = rest_.substr(1, rest_.size() - 2);
    file.rule_ = ZoneRule::parsed(text);
    return text.empty() || file.rule_;
  }

  std::string_view rest_;
  bool whole_ = true;
};

std::optional<ZoneFile> ZoneFile::parsed(std::string_view bytes) {
  ZoneFile file;
  if (!Reader(bytes).readFile(file)) return std::nullopt;
  return file;
}

ZonePeriod ZoneFile::periodAt(std::int64_t instant) const {
  const auto next = std::ranges::upper_bound(transitions_, instant);
  if (next == transitions_.end() && rule_) return rule_->periodAt(instant);
  const auto passed = static_cast<std::size_t>(next - transitions_.begin());
  ZonePeriod period = types_[passed == 0 ? 0 : typeAfter_[passed - 1]];
  if (next != transitions_.end()) period.until = *next;
  return period;
}

}  // namespace quirn::platform
