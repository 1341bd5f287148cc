// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <array>
#include <cmath>

#include "core/input_file.h"
#include "platform/text.h"
#include "workbench/color.h"
#include "workbench/reference_support.h"

namespace quirn {
namespace {

struct NamedColor {
  std::string_view name;
  int r, g, b;
};

constexpr auto namedColors = std::to_array<NamedColor>({{"black", 0, 0, 0},       {"white", 255, 255, 255},
                                                        {"red", 255, 0, 0},       {"green", 0, 128, 0},
                                                        {"lime", 0, 255, 0},      {"blue", 0, 0, 255},
                                                        {"yellow", 255, 255, 0},  {"cyan", 0, 255, 255},
                                                        {"aqua", 0, 255, 255},    {"magenta", 255, 0, 255},
                                                        {"fuchsia", 255, 0, 255}, {"gray", 128, 128, 128},
                                                        {"grey", 128, 128, 128},  {"silver", 192, 192, 192},
                                                        {"maroon", 128, 0, 0},    {"olive", 128, 128, 0},
                                                        {"navy", 0, 0, 128},      {"teal", 0, 128, 128},
                                                        {"purple", 128, 0, 128},  {"orange", 255, 165, 0},
                                                        {"pink", 255, 192, 203},  {"rebeccapurple", 102, 51, 153},
                                                        {"transparent", 0, 0, 0}});

std::optional<Color> namedColor(std::string_view name) {
  const auto found = std::ranges::find(namedColors, name, &NamedColor::name);
  if (found == namedColors.end()) return std::nullopt;
  return Color{found->r / 255.0, found->g / 255.0, found->b / 255.0, name == "transparent" ? 0.0 : 1.0};
}

// Lower case.
int hexValue(char digit) {
  if (digit >= '0' && digit <= '9') return digit - '0';
  return digit >= 'a' && digit <= 'f' ? digit - 'a' + 10 : -1;
}

bool isHex(std::string_view text) {
  return std::ranges::all_of(text, [](char digit) { return hexValue(digit) >= 0; });
}

std::optional<Color> hexColor(std::string_view digits) {
  const std::size_t perChannel = digits.size() <= 4 ? 1 : 2;
  const std::size_t channels = digits.size() / perChannel;
  if (!isHex(digits) || digits.size() % perChannel != 0 || channels < 3 || channels > 4) return std::nullopt;
  std::array<double, 4> values = {0, 0, 0, 1};
  for (std::size_t i = 0; i < channels; ++i) {
    const int high = hexValue(digits[i * perChannel]);
    const int low = hexValue(digits[(i + 1) * perChannel - 1]);
    values.at(i) = (high * 16 + low) / 255.0;
  }
  return Color{values[0], values[1], values[2], values[3]};
}

double unitClamped(double value) {
  return std::clamp(value, 0.0, 1.0);
}

// A number in which `whole` stands for 1, or a percentage.
std::optional<double> shareIn(std::string_view text, double whole) {
  if (text.ends_with('%')) {
    text.remove_suffix(1);
    whole = 100;
  }
  const auto number = numberIn(text);
  return number ? std::optional(unitClamped(*number / whole)) : std::nullopt;
}

// In parts of the circle, 0 to 1.
std::optional<double> hueIn(std::string_view text) {
  if (text.ends_with("deg")) text.remove_suffix(3);
  const auto number = numberIn(text);
  if (!number) return std::nullopt;
  const double degrees = std::fmod(*number, 360);
  return (degrees < 0 ? degrees + 360 : degrees) / 360;
}

double channelOfHue(double p, double q, double hue) {
  hue -= std::floor(hue);
  if (hue < 1.0 / 6) return p + (q - p) * 6 * hue;
  if (hue < 1.0 / 2) return q;
  if (hue < 2.0 / 3) return p + (q - p) * (2.0 / 3 - hue) * 6;
  return p;
}

Color colorOfHsl(const Hsl& hsl, double alpha) {
  if (hsl.s == 0) return {hsl.l, hsl.l, hsl.l, alpha};
  const double q = hsl.l < 0.5 ? hsl.l * (1 + hsl.s) : hsl.l + hsl.s - hsl.l * hsl.s;
  const double p = 2 * hsl.l - q;
  return {channelOfHue(p, q, hsl.h + 1.0 / 3), channelOfHue(p, q, hsl.h), channelOfHue(p, q, hsl.h - 1.0 / 3), alpha};
}

// "rgb(255, 0, 0 / 50%)": blanks, commas and the slash all only separate.
std::optional<Color> functionColor(std::string_view text) {
  const std::size_t open = text.find('(');
  if (open == std::string_view::npos || !text.ends_with(')')) return std::nullopt;
  const std::string_view name = platform::trimmed(text.substr(0, open));
  std::string separated(text.substr(open + 1, text.size() - open - 2));
  std::ranges::replace_if(separated, [](char mark) { return mark == '/' || mark == ','; }, ' ');
  const auto arguments = words(separated);
  if (arguments.size() < 3) return std::nullopt;
  const auto alpha = arguments.size() > 3 ? shareIn(arguments[3], 1) : 1.0;
  const bool isRgb = name == "rgb" || name == "rgba";
  const bool isHsl = name == "hsl" || name == "hsla";
  if (!alpha || !(isRgb || isHsl)) return std::nullopt;
  const auto first = isRgb ? shareIn(arguments[0], 255) : hueIn(arguments[0]);
  const auto second = shareIn(arguments[1], isRgb ? 255 : 100);
  const auto third = shareIn(arguments[2], isRgb ? 255 : 100);
  if (!first || !second || !third) return std::nullopt;
  if (isRgb) return Color{*first, *second, *third, *alpha};
  return colorOfHsl({*first, *second, *third}, *alpha);
}

}  // namespace

std::optional<Color> colorIn(std::string_view text) {
  constexpr std::size_t longest = 1000;
  text = platform::trimmed(text);
  if (text.empty() || text.size() > longest) return std::nullopt;
  const std::string lower = lowerCased(text);
  if (const auto color = namedColor(lower)) return color;
  if (lower.starts_with('#')) return hexColor(std::string_view(lower).substr(1));
  return isHex(lower) ? hexColor(lower) : functionColor(lower);
}

}  // namespace quirn
