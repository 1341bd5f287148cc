// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/time_zone.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <limits>

#include "platform/civil_time.h"
#include "platform/zone_file.h"

namespace quirn::platform {
namespace {

constexpr std::string_view database = "/usr/share/zoneinfo/";

bool isLetterOrDigit(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9');
}

bool isIdCharacter(char character) {
  return isLetterOrDigit(character) || character == '_' || character == '+' || character == '-' || character == '/';
}

// Beside the zones of the database, its folder holds whole copies with other leap seconds, and
// files for programs. No identifier can lead out of the folder: there is no dot in any.
bool isZoneId(std::string_view id) {
  constexpr std::size_t longest = 64;
  constexpr std::array<std::string_view, 4> others = {"posix/", "right/", "posixrules", "localtime"};
  return !id.empty() && id.size() <= longest && isLetterOrDigit(id.front()) && std::ranges::all_of(id, isIdCharacter) &&
         std::ranges::none_of(others, [&](auto other) { return id.starts_with(other); });
}

std::optional<std::string> fileContents(const std::filesystem::path& path) {
  constexpr std::uintmax_t mostBytes = 1 << 20;
  std::error_code error;
  if (!std::filesystem::is_regular_file(path, error)) return std::nullopt;
  const auto size = std::filesystem::file_size(path, error);
  if (error || size > mostBytes) return std::nullopt;
  std::ifstream stream(path, std::ios::binary);
  return std::string(std::istreambuf_iterator<char>(stream), {});
}

// What stands behind the folder of the database in a path to a file of it.
std::string_view idOfPath(std::string_view path) {
  const std::size_t at = path.rfind("/zoneinfo/");
  return at == std::string_view::npos ? path : path.substr(at + std::size("/zoneinfo/") - 1);
}

std::string machineZone() {
  std::error_code error;
  const auto target = std::filesystem::read_symlink("/etc/localtime", error);
  if (!error) return std::string(idOfPath(target.native()));
  const std::string line = fileContents("/etc/timezone").value_or("");
  return line.substr(0, line.find('\n'));
}

}  // namespace

TimeZone::TimeZone(std::string id, std::shared_ptr<const ZoneFile> file) : id_(std::move(id)), file_(std::move(file)) {}

const TimeZone& TimeZone::utc() {
  static const TimeZone zone("UTC", nullptr);
  return zone;
}

std::optional<TimeZone> TimeZone::named(std::string_view id) {
  if (id == utc().id()) return utc();
  if (!isZoneId(id)) return std::nullopt;
  const auto bytes = fileContents(std::filesystem::path(database) / id);
  if (!bytes) return std::nullopt;
  auto file = ZoneFile::parsed(*bytes);
  if (!file) return std::nullopt;
  return TimeZone(std::string(id), std::make_shared<const ZoneFile>(std::move(*file)));
}

std::optional<TimeZone> TimeZone::ofEnvironment(std::string_view value) {
  if (value.starts_with(':')) value.remove_prefix(1);
  if (value.empty()) return utc();
  if (auto zone = named(idOfPath(value))) return zone;
  auto rule = ZoneRule::parsed(value);
  if (!rule) return std::nullopt;
  return TimeZone(std::string(value), std::make_shared<const ZoneFile>(std::move(*rule)));
}

TimeZone TimeZone::current() {
  const char* value = std::getenv("TZ");
  const auto ofEnvironmentVariable = value ? ofEnvironment(value) : std::nullopt;
  return ofEnvironmentVariable ? *ofEnvironmentVariable : named(machineZone()).value_or(utc());
}

ZonePeriod TimeZone::periodAt(std::int64_t instant) const {
  if (file_) return file_->periodAt(instant);
  return {0, "UTC", std::numeric_limits<std::int64_t>::max()};
}

std::int64_t TimeZone::instantOf(std::int64_t localSeconds) const {
  // Surely before the instant, and near enough that few periods lie between.
  ZonePeriod period = periodAt(localSeconds - 2 * secondsPerDay);
  while (true) {
    const std::int64_t instant = localSeconds - period.offsetSeconds;
    if (instant < period.until) return instant;
    ZonePeriod next = periodAt(period.until);
    const bool isSkipped = localSeconds - next.offsetSeconds < period.until;
    if (isSkipped) return instant;
    period = std::move(next);
  }
}

}  // namespace quirn::platform
