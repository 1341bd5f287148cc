// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/imposition.h"

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

platform::PDFRectangle SheetLayout::cell(std::size_t index) const {
  constexpr double margin = 16;
  constexpr double gutter = 10;
  const double cellWidth = (width - 2 * margin - gutter * static_cast<double>(columns - 1)) / static_cast<double>(columns);
  const double cellHeight = (height - 2 * margin - gutter * static_cast<double>(rows - 1)) / static_cast<double>(rows);
  const double left = margin + static_cast<double>(index % columns) * (cellWidth + gutter);
  const double bottom = height - margin - static_cast<double>(index / columns) * (cellHeight + gutter) - cellHeight;
  return {left, bottom, left + cellWidth, bottom + cellHeight};
}

}  // namespace quirn
