// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The names of many files in one sentence.

#pragma once

#include <span>
#include <string>

namespace quirn {

// "a.pdf, b.pdf, c.pdf", and from the fourth on only how many more: "a.pdf, b.pdf, c.pdf, +2 more".
std::string listedNames(std::span<const std::string> names);

}  // namespace quirn
