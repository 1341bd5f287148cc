// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/catalog_commands.h"

#include <fmt/format.h>

#include <algorithm>

#include "cli/console.h"
#include "cli/description.h"
#include "cli/lookup.h"
#include "platform/json.h"

namespace quirn::cli {
namespace {

using platform::JsonArray;
using platform::JsonValue;
using Types = std::vector<const OperationType*>;

}  // namespace

void printOperations(const Types& types, bool json) {
  if (json) {
    JsonArray array;
    for (const OperationType* type : types) array.push_back(identityAsJson(*type));
    printLine(JsonValue(std::move(array)).text());
    return;
  }
  std::size_t width = 0;
  for (const OperationType* type : types) width = std::max(width, type->info().operationID.size());
  std::string lines;
  for (const OperationType* type : types) {
    lines += fmt::format("{:<{}}  {}{}\n", type->info().operationID, width, type->info().displayName,
                         type->isBuilt() ? "" : " (not built yet)");
  }
  print(lines);
}

int listCommand(const OperationRegistry& registry, const ListArguments& arguments) {
  std::optional<OperationCategory> category;
  if (arguments.category) category = categoryNamed(*arguments.category);
  Types types;
  for (const OperationType& type : registry.operations()) {
    if (!category || type.info().category == *category) types.push_back(&type);
  }
  printOperations(types, arguments.json);
  return static_cast<int>(ExitStatus::done);
}

int describeCommand(const OperationRegistry& registry, const DescribeArguments& arguments) {
  const OperationType& type = operationNamed(registry, arguments.operation);
  if (arguments.json) {
    printLine(JsonValue(descriptionAsJson(type)).text());
  } else {
    print(descriptionAsText(type));
  }
  return static_cast<int>(ExitStatus::done);
}

int suggestCommand(const OperationRegistry& registry, const SuggestArguments& arguments) {
  const Intake intake = takeIn(arguments.files);
  for (const FileFailure& failure : intake.unreadable) say(failure.message, Tone::bad);
  const Types types = intake.files.empty() ? Types() : registry.suggestions(intake.files);
  if (types.empty()) say("No operations match these files.");
  printOperations(types, arguments.json);
  return static_cast<int>(intake.unreadable.empty() ? ExitStatus::done : ExitStatus::failed);
}

}  // namespace quirn::cli
