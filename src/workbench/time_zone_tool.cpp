// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "platform/text.h"
#include "workbench/date_reader.h"
#include "workbench/date_text.h"
#include "workbench/reference_support.h"
#include "workbench/reference_tools.h"

namespace quirn {
namespace {

using platform::TimeZone;

constexpr std::string_view defaultFrom = "UTC";
constexpr std::string_view defaultTo = "America/New_York";

std::string lineInZone(std::int64_t instant, std::string_view zoneId, std::size_t width) {
  const auto zone = zoneIn(zoneId);
  if (!zone) return "";  // a system without its time zone database
  const ZonedTime time = zonedTime(instant, *zone);
  return fmt::format("\n  {:<{}}  {} {}", zoneId, width, minuteText(time.civil), time.zone);
}

std::string majorZones(std::int64_t instant) {
  constexpr std::array<std::string_view, 4> zoneIds = {"UTC", "America/New_York", "Europe/London", "Asia/Tokyo"};
  const std::size_t width = std::ranges::max(zoneIds, {}, &std::string_view::size).size();
  std::string lines;
  for (const std::string_view zoneId : zoneIds) lines += lineInZone(instant, zoneId, width);
  return lines;
}

TimeZone zoneNamed(std::string_view value, std::string_view role) {
  const auto zone = zoneIn(value);
  if (!zone) throw TextToolError(fmt::format("Unknown {} timezone \"{}\".", role, excerpt(value)));
  return *zone;
}

std::string converted(std::string_view input, const TextToolOptions& options) {
  const TimeZone from = zoneNamed(options.text("from", defaultFrom), "From");
  const TimeZone to = zoneNamed(options.text("to", defaultTo), "To");
  input = platform::trimmed(input);
  const auto instant = dateIn(input, from);
  if (!instant) {
    throw TextToolError(
        fmt::format("Could not read \"{}\" as a datetime. Try \"yyyy-MM-dd HH:mm\" or ISO 8601.", excerpt(input)));
  }
  const std::int64_t seconds = instant->seconds;
  return fmt::format("{}: {}\n→ {}: {}\n\nAll zones (same instant):{}", from.id(), longText(zonedTime(seconds, from)),
                     to.id(), longText(zonedTime(seconds, to)), majorZones(seconds));
}

}  // namespace

const TextTool& timeZoneTool() {
  static const TextTool tool{.id = "time.timezone",
                             .name = "Timezone Converter",
                             .shortName = "tz",
                             .icon = "globe",
                             .category = OperationCategory::time,
                             .aliases = {"timezone", "time zone", "tz", "utc", "convert time"},
                             .blurb = "Convert a datetime from one timezone to another, with a table of major zones.",
                             .inputPlaceholder = "2026-06-14 15:00  or  2026-06-14T15:00:00Z",
                             .controls = {FieldControl{"from", "From", std::string(defaultFrom), "UTC"},
                                          FieldControl{"to", "To", std::string(defaultTo), "America/New_York"}},
                             .sampleInput = "2026-06-14 15:00",
                             .transform = converted};
  return tool;
}

}  // namespace quirn
