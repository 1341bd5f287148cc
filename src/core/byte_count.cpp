// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/byte_count.h"

#include <fmt/format.h>

#include <array>
#include <cmath>
#include <string_view>

namespace quirn {
namespace {

struct Unit {
  std::string_view name;
  int decimals;
};

constexpr std::array units{Unit{"KB", 0}, Unit{"MB", 1}, Unit{"GB", 2}, Unit{"TB", 2}, Unit{"PB", 2}, Unit{"EB", 2}};
constexpr double unitStep = 1000;

double rounded(double value, int decimals) {
  const double scale = std::pow(10, decimals);
  return std::round(value * scale) / scale;
}

std::string withoutTrailingZeros(std::string number) {
  if (number.find('.') == std::string::npos) return number;
  number.erase(number.find_last_not_of('0') + 1);
  if (number.back() == '.') number.pop_back();
  return number;
}

}  // namespace

std::string byteCountText(std::int64_t bytes) {
  if (bytes == 0) return "Zero KB";
  if (std::abs(static_cast<double>(bytes)) < unitStep)
    return fmt::format("{} {}", bytes, bytes == 1 ? "byte" : "bytes");
  double value = static_cast<double>(bytes) / unitStep;
  const Unit* unit = units.data();
  // What would be shown as a thousand of a unit is one of the next.
  while (unit != &units.back() && std::abs(rounded(value, unit->decimals)) >= unitStep) {
    value /= unitStep;
    ++unit;
  }
  return withoutTrailingZeros(fmt::format("{:.{}f}", rounded(value, unit->decimals), unit->decimals)) + " " +
         std::string(unit->name);
}

}  // namespace quirn
