// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a stranger's file may cost. One table: the limit, its unit, and what a person reads when a file goes beyond it.
// What is counted is real: bytes written, pages made, seconds gone; never what a header claims. A limit that an
// operation states for itself comes before these.

#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "core/operation_error.h"

namespace quirn {

enum class Budget {
  // Of every boxed operation.
  secondsOfSilence,
  memory,
  bytesOutPerByteIn,
  outputs,
  // Of the operations that name them.
  entries,
  pixels,
  frames,
  pages,
  nesting,
};

struct BudgetRow {
  Budget budget;
  std::int64_t limit;
  std::string_view what;    // completes "at most {limit} …"
  std::string_view breach;  // a sentence, "{}" for the file's name
};

inline constexpr std::array budgetTable{
    BudgetRow{Budget::secondsOfSilence, 30, "seconds without any progress",
              "{} kept the program that reads it busy without getting anywhere."},
    BudgetRow{Budget::memory, std::int64_t{4} << 30, "bytes of memory",
              "{} needs more memory than Quirn gives a file."},
    BudgetRow{Budget::bytesOutPerByteIn, 1000, "bytes of output for each byte of input",
              "{} would become far larger than an honest file of its size."},
    BudgetRow{Budget::outputs, 10'000, "outputs of one file", "{} would become more files than Quirn makes of one."},
    BudgetRow{Budget::entries, 1'000'000, "entries in one container", "{} holds more entries than Quirn opens."},
    BudgetRow{Budget::pixels, 1'000'000'000, "pixels in one picture", "{} is a larger picture than Quirn opens."},
    BudgetRow{Budget::frames, 1'000'000, "frames in one animation", "{} has more frames than Quirn reads."},
    BudgetRow{Budget::pages, 100'000, "pages in one document", "{} has more pages than Quirn reads."},
    BudgetRow{Budget::nesting, 100, "levels of nesting", "{} is nested deeper than Quirn follows."},
};

inline constexpr std::array budgetsOfEveryBox{Budget::secondsOfSilence, Budget::memory, Budget::bytesOutPerByteIn,
                                              Budget::outputs};

// Small inputs may become this large whatever the ratio says: a text of a few bytes, a drawing of a page.
inline constexpr std::int64_t alwaysAllowedOutput = std::int64_t{1} << 30;  // bytes

constexpr const BudgetRow& rowOf(Budget budget) {
  return budgetTable.at(static_cast<std::size_t>(budget));
}

constexpr std::int64_t limitOf(Budget budget) {
  return rowOf(budget).limit;
}

// For a file that goes beyond the budget.
OperationError breachOf(Budget budget, std::string_view fileName);

}  // namespace quirn
