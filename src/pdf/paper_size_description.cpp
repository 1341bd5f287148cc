// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <array>

#include "pdf/paper_size.h"

namespace quirn {
namespace {

struct Row {
  std::string_view label;
  PaperExtent extent;
};

// In the order of the enumerators.
constexpr std::array rows{Row{"A4", {595.2, 841.8}}, Row{"Letter", {612, 792}}, Row{"Legal", {612, 1008}},
                          Row{"A3", {841.8, 1190.5}}, Row{"A5", {419.5, 595.2}}};

constexpr const Row& rowOf(PaperSize paper) {
  return rows.at(static_cast<std::size_t>(paper));
}

}  // namespace

PaperExtent extentOf(PaperSize paper) {
  return rowOf(paper).extent;
}

std::string_view label(PaperSize paper) {
  return rowOf(paper).label;
}

}  // namespace quirn
