// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The contents of one file of the time zone database, as RFC 9636 (TZif) has it.

#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/zone_rule.h"

namespace quirn::platform {

class ZoneFile {
 public:
  // One rule for all times.
  explicit ZoneFile(ZoneRule rule) : rule_(std::move(rule)) {}

  // Nothing if the bytes aren't a whole TZif file of version 2 or later; 1 ends in 2038.
  static std::optional<ZoneFile> parsed(std::string_view bytes);

  ZonePeriod periodAt(std::int64_t instant) const;

 private:
  ZoneFile() = default;

  struct Counts;
  class Reader;

  std::vector<std::int64_t> transitions_;
  std::vector<std::uint8_t> typeAfter_;  // of each transition: an index into types_
  std::vector<ZonePeriod> types_;        // not empty, unless all goes by the rule
  std::optional<ZoneRule> rule_;         // after the last transition
};

}  // namespace quirn::platform
