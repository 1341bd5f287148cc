// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The sizes of paper that pages are put on.

#pragma once

#include <string_view>

namespace quirn {

enum class PaperSize { a4, letter, legal, a3, a5 };

// In points, portrait.
struct PaperExtent {
  double width;
  double height;
};

PaperExtent extentOf(PaperSize paper);
std::string_view label(PaperSize paper);

}  // namespace quirn
