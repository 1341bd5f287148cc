// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The program from its arguments to its exit status.

#pragma once

#include <span>
#include <string>

namespace quirn::cli {

// `words` are those behind the program's name. Lets no exception out.
int runProgram(std::span<const std::string> words);

}  // namespace quirn::cli
