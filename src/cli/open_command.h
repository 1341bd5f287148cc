// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// "quirn" and "quirn open": the window.

#pragma once

#include <string>
#include <vector>

#include "core/registry.h"

namespace quirn::cli {

struct OpenArguments {
  std::string operation;               // to run on them; empty: only show them
  std::vector<std::string> locations;  // files, and links of the quirn scheme
};

// Hands the locations to the window that is open on this display, or else opens it and ends when it
// is closed. Throws UsageError where there is no display.
int openCommand(OperationRegistry& registry, const OpenArguments& arguments);

}  // namespace quirn::cli
