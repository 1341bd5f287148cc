// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/budgets.h"

#include <fmt/format.h>

#include <algorithm>

namespace quirn {

static_assert(std::ranges::is_sorted(budgetTable, {}, &BudgetRow::budget), "rowOf() takes rows by their number");

OperationError breachOf(Budget budget, std::string_view fileName) {
  return OperationError::unsupportedInput(fmt::format(fmt::runtime(rowOf(budget).breach), fileName));
}

}  // namespace quirn
