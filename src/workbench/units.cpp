// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/units.h"

namespace quirn {
namespace {

// The international yard and pound (1959), the calorie of thermochemistry, and the conventional
// columns of mercury, at 133.322387415 Pa for a millimetre. All are exact.
constexpr long double foot = 0.3048L;
constexpr long double mile = 5280 * foot;
constexpr long double nauticalMile = 1852;
constexpr long double pound = 0.45359237L;  // in kilograms
constexpr long double inch = foot / 12;
constexpr long double gallon = 231 * inch * inch * inch * 1000;  // of the US, in litres
constexpr long double standardGravity = 9.80665L;
constexpr long double millimetreOfMercury = 133.322387415L;
constexpr long double zeroCelsius = 273.15L;
constexpr long double zeroFahrenheit = zeroCelsius - 32 / 1.8L;

}  // namespace

std::span<const UnitCategory> unitCategories() {
  static const std::vector<UnitCategory> categories = {
      {"Length",
       {{"mm", 0.001L},
        {"cm", 0.01L},
        {"m"},
        {"km", 1000},
        {"in", inch},
        {"ft", foot},
        {"yd", 3 * foot},
        {"mi", mile},
        {"nmi", nauticalMile}}},
      {"Mass",
       {{"mg", 1e-6L}, {"g", 1e-3L}, {"kg"}, {"t", 1000}, {"oz", pound / 16}, {"lb", pound}, {"st", 14 * pound}}},
      {"Temperature", {{"C", 1, zeroCelsius}, {"F", 1 / 1.8L, zeroFahrenheit}, {"K"}}},
      {"Volume",
       {{"ml", 0.001L},
        {"l"},
        {"m3", 1000},
        {"tsp", gallon / 768},
        {"tbsp", gallon / 256},
        {"floz", gallon / 128},
        {"cup", gallon / 16},
        {"pt", gallon / 8},
        {"qt", gallon / 4},
        {"gal", gallon}}},
      {"Speed", {{"m/s"}, {"km/h", 1 / 3.6L}, {"mph", mile / 3600}, {"kn", nauticalMile / 3600}}},
      {"Data",
       {{"B"},
        {"KB", 1e3L},
        {"MB", 1e6L},
        {"GB", 1e9L},
        {"TB", 1e12L},
        {"KiB", 1024},
        {"MiB", 1024 * 1024},
        {"GiB", 1024 * 1024 * 1024}}},
      {"Area",
       {{"mm2", 1e-6L},
        {"cm2", 1e-4L},
        {"m2"},
        {"km2", 1e6L},
        {"ha", 1e4L},
        {"ac", mile * mile / 640},
        {"ft2", foot * foot},
        {"mi2", mile * mile}}},
      {"Duration", {{"s"}, {"min", 60}, {"h", 3600}, {"ms", 0.001L}}},
      {"Energy", {{"J"}, {"kJ", 1000}, {"cal", 4.184L}, {"kcal", 4184}, {"kWh", 3'600'000}}},
      {"Pressure",
       {{"Pa"},
        {"kPa", 1000},
        {"bar", 100'000},
        {"hPa", 100},
        {"psi", pound * standardGravity / (inch * inch)},
        {"atm", 101'325},
        {"mmHg", millimetreOfMercury},
        {"inHg", 25.4L * millimetreOfMercury}}}};
  return categories;
}

long double converted(long double value, const Unit& from, const Unit& to) {
  return (value * from.factor + from.offset - to.offset) / to.factor;
}

}  // namespace quirn
