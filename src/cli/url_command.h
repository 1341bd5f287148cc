// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// "quirn url": what the desktop does with a link of the quirn scheme, done here.

#pragma once

#include <filesystem>
#include <optional>
#include <string>

#include "core/registry.h"

namespace quirn::cli {

struct UrlArguments {
  std::string url;
  std::optional<std::filesystem::path> out;
  bool json = false;
};

// A link to run an operation does what "quirn run" does; one to open files prints what "quirn
// suggest" prints for them. Throws UsageError and OutputLost.
int urlCommand(const OperationRegistry& registry, const UrlArguments& arguments);

}  // namespace quirn::cli
