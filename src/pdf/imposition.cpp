// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/imposition.h"

#include <algorithm>

namespace quirn {

std::vector<Slot> pagesInOrder(std::size_t pageCount) {
  std::vector<Slot> slots;
  for (std::size_t page = 0; page < pageCount; ++page) slots.emplace_back(page);
  return slots;
}

std::vector<Slot> bookletSlots(std::size_t pageCount) {
  const std::size_t total = (pageCount + 3) / 4 * 4;
  const auto slotOf = [pageCount](std::size_t page) { return page < pageCount ? Slot(page) : std::nullopt; };
  std::vector<Slot> slots;
  for (std::size_t low = 0; low < total / 2; low += 2) {
    const std::size_t high = total - 1 - low;
    for (const std::size_t page : {high, low, low + 1, high - 1}) slots.push_back(slotOf(page));
  }
  return slots;
}

namespace {

// How the cells of a row or a column share a side of the sheet.
struct Division {
  double margin = 16;
  double gutter = 10;
  double cell = 0;

  Division(double side, double count) {
    const double room = 2 * margin + gutter * (count - 1);
    // On a sheet that is little more than room, that shrinks to a third of it.
    const double share = std::min(1.0, side / (3 * room));
    margin *= share;
    gutter *= share;
    cell = (side - room * share) / count;
  }
  double before(double index) const { return margin + index * (cell + gutter); }
};

}  // namespace

platform::PDFRectangle SheetLayout::cell(std::size_t index) const {
  const Division across(width, static_cast<double>(columns));
  const Division down(height, static_cast<double>(rows));
  const double left = across.before(static_cast<double>(index % columns));
  const double bottom = height - down.before(static_cast<double>(index / columns)) - down.cell;
  return {left, bottom, left + across.cell, bottom + down.cell};
}

}  // namespace quirn
