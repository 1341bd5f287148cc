// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/search_command.h"

#include <fmt/format.h>

#include "cli/catalog_commands.h"
#include "cli/console.h"
#include "cli/exit_status.h"
#include "core/operation_search.h"

namespace quirn::cli {

int searchCommand(const OperationRegistry& registry, const SearchArguments& arguments) {
  const Intake intake = takeIn(arguments.files);
  for (const FileFailure& failure : intake.unreadable) say(failure.message, Tone::bad);
  const std::string text = fmt::format("{}", fmt::join(arguments.words, " "));
  const auto types = OperationSearch(registry).find(text, intake.files);
  if (types.empty()) say(fmt::format("No operation is called anything like “{}”.", text));
  printOperations(types, arguments.json);
  return static_cast<int>(intake.unreadable.empty() ? ExitStatus::done : ExitStatus::failed);
}

}  // namespace quirn::cli
