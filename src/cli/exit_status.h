// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the program tells the shell.

#pragma once

#include <stdexcept>

namespace quirn::cli {

enum class ExitStatus : int {
  done = 0,
  failed = 1,    // the run, or some input of it
  wrongUse = 2,  // the command line asks for something that isn't there
  interrupted = 130,
};

// A command line that can't be carried out. The message says what is accepted.
class UsageError final : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace quirn::cli
