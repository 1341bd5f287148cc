// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// "quirn search": operations by what a person calls them.

#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "core/registry.h"

namespace quirn::cli {

struct SearchArguments {
  std::vector<std::string> words;
  std::vector<std::filesystem::path> files;
  bool json = false;
};

// Throws OutputLost.
int searchCommand(const OperationRegistry& registry, const SearchArguments& arguments);

}  // namespace quirn::cli
