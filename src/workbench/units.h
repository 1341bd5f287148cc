// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Units of measurement and how they convert.

#pragma once

#include <span>
#include <string_view>
#include <vector>

namespace quirn {

struct Unit {
  std::string_view symbol;
  // A value in the unit is value * factor + offset in the base unit of its category.
  long double factor = 1;
  long double offset = 0;
};

struct UnitCategory {
  std::string_view name;
  std::vector<Unit> units;
};

std::span<const UnitCategory> unitCategories();

// Between two units of one category.
long double converted(long double value, const Unit& from, const Unit& to);

}  // namespace quirn
