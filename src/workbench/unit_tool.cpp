// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <cmath>

#include "core/input_file.h"
#include "platform/text.h"
#include "workbench/reference_support.h"
#include "workbench/reference_tools.h"
#include "workbench/units.h"

namespace quirn {
namespace {

constexpr std::string_view defaultCategory = "Length";
constexpr std::string_view defaultUnit = "km";

// At most six decimals, and no digit beyond the fifteenth, where a double stops being what was
// typed.
std::string numberText(long double value) {
  constexpr int significantDigits = 15;
  constexpr int mostDecimals = 6;
  const std::string scientific = fmt::format("{:.{}e}", value, significantDigits - 1);
  const int exponent = value == 0 ? 0 : std::stoi(scientific.substr(scientific.find('e') + 1));
  const int decimals = significantDigits - 1 - exponent;
  if (decimals >= 0) {
    // As a double: the formatting library prints more decimals of a small long double than asked.
    return withoutTrailingZeros(fmt::format("{:.{}f}", static_cast<double>(value), std::min(decimals, mostDecimals)));
  }
  std::string digits = scientific.substr(0, scientific.find('e'));
  std::erase(digits, '.');
  return digits + std::string(static_cast<std::size_t>(-decimals), '0');
}

const UnitCategory& categoryNamed(std::string_view name) {
  const auto found = std::ranges::find(unitCategories(), name, &UnitCategory::name);
  if (found == unitCategories().end()) throw TextToolError(fmt::format("Unknown category \"{}\".", excerpt(name)));
  return *found;
}

const Unit& unitNamed(std::string_view symbol, const UnitCategory& category) {
  const std::string sought = lowerCased(platform::trimmed(symbol));
  const auto& units = category.units;
  const auto found = std::ranges::find_if(units, [&](const Unit& unit) { return lowerCased(unit.symbol) == sought; });
  if (found != units.end()) return *found;
  std::vector<std::string_view> symbols;
  for (const Unit& unit : units) symbols.push_back(unit.symbol);
  throw TextToolError(fmt::format("\"{}\" isn't a {} unit. Valid symbols: {}.", excerpt(symbol), category.name,
                                  fmt::join(symbols, ", ")));
}

std::string convertedToAll(std::string_view input, const TextToolOptions& options) {
  const UnitCategory& category = categoryNamed(options.text("category", defaultCategory));
  input = platform::trimmed(input);
  const auto value = numberIn(input);
  if (!value) {
    throw TextToolError(fmt::format("Enter a single number to convert (got \"{}\").", excerpt(input)));
  }
  const Unit& from = unitNamed(options.text("from", defaultUnit), category);
  std::string text = fmt::format("{} {} =", numberText(*value), from.symbol);
  for (const Unit& unit : category.units) {
    const bool isSource = &unit == &from;
    text += fmt::format("\n  {} {}{}", numberText(isSource ? *value : converted(*value, from, unit)), unit.symbol,
                        isSource ? "  ←" : "");
  }
  return text;
}

std::vector<std::string> categoryNames() {
  std::vector<std::string> names;
  for (const UnitCategory& category : unitCategories()) names.emplace_back(category.name);
  return names;
}

}  // namespace

const TextTool& unitTool() {
  static const TextTool tool{
      .id = "time.units",
      .name = "Unit Converter",
      .shortName = "units",
      .icon = "ruler",
      .category = OperationCategory::time,
      .aliases = {"unit", "convert", "length", "mass", "temperature", "volume", "speed", "data", "area", "duration",
                  "energy", "pressure"},
      .blurb = "Convert a value to every common unit in a category — length, mass, data, and more.",
      .inputPlaceholder = "100",
      .controls = {ChoiceControl{"category", "Category", categoryNames(), std::string(defaultCategory)},
                   FieldControl{"from", "From unit", std::string(defaultUnit), "km"}},
      .sampleInput = "100",
      .transform = convertedToAll};
  return tool;
}

}  // namespace quirn
