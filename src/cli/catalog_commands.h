// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The commands that tell what Quirn can do: "quirn list", "quirn describe" and "quirn suggest". All
// throw UsageError and OutputLost.

#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "cli/exit_status.h"
#include "core/registry.h"

namespace quirn::cli {

struct ListArguments {
  std::optional<std::string> category;
  bool json = false;
};
int listCommand(const OperationRegistry& registry, const ListArguments& arguments);

struct DescribeArguments {
  std::string operation;
  bool json = false;
};
int describeCommand(const OperationRegistry& registry, const DescribeArguments& arguments);

struct SuggestArguments {
  std::vector<std::filesystem::path> files;
  bool json = false;
};
int suggestCommand(const OperationRegistry& registry, const SuggestArguments& arguments);

// Identifiers and names in columns, or all identities as one line of JSON.
void printOperations(const std::vector<const OperationType*>& types, bool json);

}  // namespace quirn::cli
