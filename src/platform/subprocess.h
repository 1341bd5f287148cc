// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Another program, started without a shell.

#pragma once

#include <initializer_list>
#include <string>

namespace quirn::platform {

struct FinishedProgram {
  int exitStatus = 0;  // 128 and the signal's number if a signal ended it, as shells tell it
  std::string output;  // what it wrote to standard output
};

// Runs `program`, an absolute path, with these arguments and an empty standard input, and waits for
// its end. It gets neither our signals' state nor our descriptors. Throws std::system_error.
FinishedProgram runSubprocess(const char* program, std::initializer_list<const char*> arguments);

}  // namespace quirn::platform
