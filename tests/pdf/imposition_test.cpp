// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/imposition.h"

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <string>

namespace quirn {
namespace {

// The pages from 1 on, two to a side, "-" for a blank.
std::string sides(const std::vector<Slot>& slots) {
  std::string text;
  for (std::size_t i = 0; i < slots.size(); ++i) {
    text += slots[i] ? fmt::format("{}", *slots[i] + 1) : "-";
    text += i % 2 == 0 ? " " : i + 1 < slots.size() ? "|" : "";
  }
  return text;
}

struct BookletRow {
  std::size_t pageCount;
  const char* sides;
};

// Folded by hand.
const BookletRow bookletRows[] = {
    {0, ""},
    {1, "- 1|- -"},
    {2, "- 1|2 -"},
    {4, "4 1|2 3"},
    {5, "- 1|2 -|- 3|4 5"},
    {8, "8 1|2 7|6 3|4 5"},
    {12, "12 1|2 11|10 3|4 9|8 5|6 7"},
};

TEST(Imposition, OrdersABookletSoThatItReadsWhenFolded) {
  for (const BookletRow& row : bookletRows) EXPECT_EQ(sides(bookletSlots(row.pageCount)), row.sides) << row.pageCount;
}

TEST(Imposition, ABookletHoldsEveryPageOnce) {
  for (std::size_t count = 0; count < 40; ++count) {
    std::vector<int> seen(count);
    for (const Slot slot : bookletSlots(count)) {
      if (slot) ++seen.at(*slot);
    }
    EXPECT_TRUE(std::ranges::all_of(seen, [](int times) { return times == 1; })) << count;
  }
}

TEST(Imposition, CellsFillTheSheetFromTheTopLeft) {
  // (792 - 2 * 16 - 10) / 2 = 375; 612 - 2 * 16 = 580.
  const SheetLayout twoUp{2, 1, 792, 612};
  EXPECT_EQ(twoUp.cell(0), (platform::PDFRectangle{16, 16, 391, 596}));
  EXPECT_EQ(twoUp.cell(1), (platform::PDFRectangle{401, 16, 776, 596}));
  // (612 - 32 - 10) / 2 = 285; (792 - 32 - 10) / 2 = 375.
  const SheetLayout fourUp{2, 2, 612, 792};
  EXPECT_EQ(fourUp.cell(0), (platform::PDFRectangle{16, 401, 301, 776}));
  const platform::PDFRectangle tiny = SheetLayout{3, 3, 30, 30}.cell(4);
  EXPECT_NEAR(tiny.width(), 20.0 / 3, 1e-9) << "on a sheet smaller than its margins, cells keep two thirds";
  EXPECT_EQ(fourUp.cell(3), (platform::PDFRectangle{311, 16, 596, 391}));
}

}  // namespace
}  // namespace quirn
