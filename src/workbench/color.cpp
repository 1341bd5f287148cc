// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/color.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace quirn {
namespace {

double degrees(double radians) {
  return radians * 180 / std::numbers::pi;
}

struct Extent {
  double lowest;
  double highest;
  double span() const { return highest - lowest; }
};

Extent extentOf(const Color& color) {
  const auto [lowest, highest] = std::minmax({color.r, color.g, color.b});
  return {lowest, highest};
}

double hueOf(const Color& color) {
  const auto [lowest, highest] = extentOf(color);
  const double span = highest - lowest;
  if (span == 0) return 0;
  if (highest == color.r) return 60 * ((color.g - color.b) / span + (color.g < color.b ? 6 : 0));
  if (highest == color.g) return 60 * ((color.b - color.r) / span + 2);
  return 60 * ((color.r - color.g) / span + 4);
}

// sRGB stores channels by a curve; below the threshold it is a line.
double linear(double channel, double threshold) {
  return channel <= threshold ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

}  // namespace

int byteOf(double value) {
  return static_cast<int>(std::lround(value * 255));
}

std::string hexText(const Color& color) {
  const std::string text = fmt::format("#{:02X}{:02X}{:02X}", byteOf(color.r), byteOf(color.g), byteOf(color.b));
  return color.a < 1 ? text + fmt::format("{:02X}", byteOf(color.a)) : text;
}

Hsl hslOf(const Color& color) {
  const Extent extent = extentOf(color);
  const double sum = extent.lowest + extent.highest;
  const double room = sum > 1 ? 2 - sum : sum;
  return {hueOf(color), extent.span() == 0 ? 0 : extent.span() / room, sum / 2};
}

Hsb hsbOf(const Color& color) {
  const Extent extent = extentOf(color);
  return {hueOf(color), extent.highest == 0 ? 0 : extent.span() / extent.highest, extent.highest};
}

Cmyk cmykOf(const Color& color) {
  const double brightest = extentOf(color).highest;
  if (brightest == 0) return {0, 0, 0, 1};
  const auto ink = [&](double channel) { return (brightest - channel) / brightest; };
  return {ink(color.r), ink(color.g), ink(color.b), 1 - brightest};
}

// The matrices are those that Oklab was published with, in the revision of 2021-01-25.
Oklch oklchOf(const Color& color) {
  constexpr double threshold = 0.04045;
  const double r = linear(color.r, threshold);
  const double g = linear(color.g, threshold);
  const double b = linear(color.b, threshold);
  const double l = std::cbrt(0.4122214708 * r + 0.5363325363 * g + 0.0514459929 * b);
  const double m = std::cbrt(0.2119034982 * r + 0.6806995451 * g + 0.1073969566 * b);
  const double s = std::cbrt(0.0883024619 * r + 0.2817188376 * g + 0.6299787005 * b);
  const double lightness = 0.2104542553 * l + 0.7936177850 * m - 0.0040720468 * s;
  const double greenRed = 1.9779984951 * l - 2.4285922050 * m + 0.4505937099 * s;
  const double blueYellow = 0.0259040371 * l + 0.7827717662 * m - 0.8086757660 * s;
  const double hue = degrees(std::atan2(blueYellow, greenRed));
  return {lightness, std::hypot(greenRed, blueYellow), hue < 0 ? hue + 360 : hue};
}

double relativeLuminance(const Color& color) {
  // WCAG 2 states another threshold than sRGB; no color of 8 bits lies between the two.
  constexpr double threshold = 0.03928;
  return 0.2126 * linear(color.r, threshold) + 0.7152 * linear(color.g, threshold) +
         0.0722 * linear(color.b, threshold);
}

double contrastRatio(const Color& one, const Color& other) {
  const auto [darker, lighter] = std::minmax({relativeLuminance(one), relativeLuminance(other)});
  return (lighter + 0.05) / (darker + 0.05);
}

}  // namespace quirn
