// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Imposition: which page stands where on which sheet.

#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "platform/pdf_geometry.h"

namespace quirn {

// A place for a page, by its number from 0; empty where it stays blank.
using Slot = std::optional<std::size_t>;

std::vector<Slot> pagesInOrder(std::size_t pageCount);

// Two slots a side, for sheets that are printed on both sides, laid on one another and folded: the last page stands
// left of the first, the second left of the last but one, and so on. The count is filled up to a multiple of four.
std::vector<Slot> bookletSlots(std::size_t pageCount);

// A sheet of cells with margins around and gutters between them. Lengths in points.
struct SheetLayout {
  std::size_t columns = 1;
  std::size_t rows = 1;
  double width = 0;
  double height = 0;

  std::size_t cellCount() const { return columns * rows; }
  // The first is at the top left; they are counted along the rows.
  platform::PDFRectangle cell(std::size_t index) const;
};

}  // namespace quirn
