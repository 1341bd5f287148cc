// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The program in a folder of its own, beside a module that no release would meet.

#include <string>
#include <vector>

#include "cli/program.h"

int main(int argc, char** argv) {
  const std::vector<std::string> words(argv + 1, argv + argc);
  return quirn::cli::runProgram(words);
}
