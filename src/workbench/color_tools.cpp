// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>
#include <fmt/ranges.h>

#include "workbench/color.h"
#include "workbench/reference_support.h"
#include "workbench/reference_tools.h"

namespace quirn {
namespace {

using Lines = std::vector<std::string_view>;

constexpr std::string_view linearType = "linear";
constexpr std::int64_t defaultAngle = 90;

std::string decimals(double value, int most) {
  return withoutTrailingZeros(fmt::format("{:.{}f}", value, most));
}

std::string percent(double share) {
  return decimals(share * 100, 0) + "%";
}

Color parsedColor(std::string_view line) {
  if (const auto color = colorIn(line)) return *color;
  throw TextToolError(
      fmt::format("Couldn’t parse “{}” — try #RRGGBB, rgb(…), hsl(…), or a color name.", excerpt(line)));
}

std::string everyForm(std::string_view line) {
  const Color color = parsedColor(line);
  const std::string alpha = color.a < 1 ? " / " + decimals(color.a, 2) : "";
  const Hsl hsl = hslOf(color);
  const Hsb hsb = hsbOf(color);
  const Cmyk cmyk = cmykOf(color);
  const Oklch oklch = oklchOf(color);
  return fmt::format(
      "{}\n"
      "  HEX   {}\n"
      "  RGB   rgb({}, {}, {}{})\n"
      "  HSL   hsl({}, {}, {}{})\n"
      "  HSB   hsb({}, {}, {})\n"
      "  CMYK  cmyk({}, {}, {}, {})\n"
      "  OKLCH oklch({}% {} {}{})",
      line, hexText(color), byteOf(color.r), byteOf(color.g), byteOf(color.b), alpha, decimals(hsl.h, 0),
      percent(hsl.s), percent(hsl.l), alpha, decimals(hsb.h, 0), percent(hsb.s), percent(hsb.b), percent(cmyk.c),
      percent(cmyk.m), percent(cmyk.y), percent(cmyk.k), decimals(oklch.l * 100, 1), decimals(oklch.c, 3),
      decimals(oklch.h, 1), alpha);
}

std::string convertedColors(std::string_view input, const TextToolOptions& /*options*/) {
  const Lines lines = trimmedLines(input);
  if (lines.empty()) throw TextToolError("Enter at least one color, one per line.");
  std::string text;
  for (const std::string_view line : lines) text += (text.empty() ? "" : "\n\n") + everyForm(line);
  return text;
}

Color colorInRole(std::string_view line, std::string_view role) {
  if (const auto color = colorIn(line)) return *color;
  throw TextToolError(fmt::format("Couldn’t parse {} “{}”.", role, excerpt(line)));
}

std::string checkedContrast(std::string_view input, const TextToolOptions& /*options*/) {
  const Lines lines = trimmedLines(input);
  if (lines.size() < 2) throw TextToolError("Enter two colors — foreground on line 1, background on line 2.");
  const Color foreground = colorInRole(lines[0], "foreground");
  const Color background = colorInRole(lines[1], "background");
  const double ratio = contrastRatio(foreground, background);
  const auto verdict = [&](double least) { return ratio >= least ? "PASS" : "FAIL"; };
  return fmt::format(
      "Contrast  {}:1\n"
      "  Foreground  {}\n"
      "  Background  {}\n"
      "\n"
      "  AA  normal (≥ 4.5)   {}\n"
      "  AA  large  (≥ 3.0)   {}\n"
      "  AAA normal (≥ 7.0)   {}\n"
      "  AAA large  (≥ 4.5)   {}",
      decimals(ratio, 2), hexText(foreground), hexText(background), verdict(4.5), verdict(3), verdict(7), verdict(4.5));
}

std::string gradientStops(const Lines& lines) {
  std::vector<std::string> stops;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    const double share = static_cast<double>(i) / static_cast<double>(lines.size() - 1);
    stops.push_back(fmt::format("{} {}", hexText(parsedColor(lines[i])), percent(share)));
  }
  return fmt::format("{}", fmt::join(stops, ", "));
}

std::string gradientRule(std::string_view input, const TextToolOptions& options) {
  const Lines lines = trimmedLines(input);
  if (lines.size() < 2) throw TextToolError("Enter at least two colors, one per line.");
  const std::string stops = gradientStops(lines);
  if (options.text("type", linearType) == "radial")
    return fmt::format("background: radial-gradient(circle, {});", stops);
  return fmt::format("background: linear-gradient({}deg, {});", options.integer("angle", defaultAngle), stops);
}

}  // namespace

const TextTool& colorConverterTool() {
  static const TextTool tool{
      .id = "color.convert",
      .name = "Color Converter",
      .shortName = "color",
      .icon = "paintpalette",
      .category = OperationCategory::color,
      .aliases = {"hex to rgb", "rgb to hex", "hsl", "oklch", "cmyk", "color convert", "color code"},
      .blurb = "Convert any color to HEX, RGB, HSL, HSB, CMYK, and OKLCH.",
      .inputPlaceholder = "One color per line — #3B82F6, rgb(…), hsl(…), or a name…",
      .sampleInput = "#3B82F6\nrebeccapurple\nrgb(255,128,0)",
      .transform = convertedColors};
  return tool;
}

const TextTool& colorContrastTool() {
  static const TextTool tool{.id = "color.contrast",
                             .name = "WCAG Contrast",
                             .shortName = "contrast",
                             .icon = "circle.lefthalf.filled",
                             .category = OperationCategory::color,
                             .aliases = {"wcag", "contrast ratio", "a11y contrast", "accessibility color", "aa aaa"},
                             .blurb = "Check the WCAG contrast ratio between two colors (AA / AAA).",
                             .inputPlaceholder = "Foreground color on line 1, background on line 2…",
                             .sampleInput = "#777777\n#ffffff",
                             .transform = checkedContrast};
  return tool;
}

const TextTool& gradientTool() {
  static const TextTool tool{.id = "color.gradient",
                             .name = "Gradient CSS",
                             .shortName = "gradient",
                             .icon = "square.righthalf.filled",
                             .category = OperationCategory::color,
                             .aliases = {"css gradient", "linear gradient", "radial gradient", "color stops"},
                             .blurb = "Turn a list of colors into a CSS linear or radial gradient.",
                             .inputPlaceholder = "One color per line, two or more…",
                             .outputExtension = "css",
                             .controls = {ChoiceControl{"type", "Type", {"linear", "radial"}, std::string(linearType)},
                                          StepperControl{"angle", "Angle", 0, 360, defaultAngle}},
                             .sampleInput = "#FF512F\n#DD2476",
                             .transform = gradientRule};
  return tool;
}

}  // namespace quirn
