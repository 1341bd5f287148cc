// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// "quirn run": one operation on the named files.

#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cli/exit_status.h"
#include "core/registry.h"

namespace quirn::cli {

struct RunArguments {
  std::string operation;
  std::vector<std::filesystem::path> files;
  std::optional<std::filesystem::path> out;
  std::vector<std::string> settings;  // "key=value"
  bool json = false;
  bool quiet = false;
  bool verbose = false;
};

// Throws UsageError and OutputLost.
int runCommand(const OperationRegistry& registry, const RunArguments& arguments);

}  // namespace quirn::cli
