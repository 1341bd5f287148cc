// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/program.h"

#include <fmt/format.h>
#include <sys/resource.h>

#include <csignal>
#include <exception>
#include <variant>

#include "catalog/catalog.h"
#include "cli/command_line.h"
#include "cli/console.h"
#include "cli/exit_status.h"
#include "core/box/worker.h"

namespace quirn::cli {
namespace {

struct Dispatch {
  const OperationRegistry& registry;

  int operator()(const Printout& printout) const {
    print(printout.text);
    return static_cast<int>(ExitStatus::done);
  }
  int operator()(const RunArguments& arguments) const { return runCommand(registry, arguments); }
  int operator()(const ListArguments& arguments) const { return listCommand(registry, arguments); }
  int operator()(const DescribeArguments& arguments) const {
    return describeCommand(registry, arguments);
  }
  int operator()(const SuggestArguments& arguments) const {
    return suggestCommand(registry, arguments);
  }
};

// Outputs wait for the disk in groups, each with a descriptor; the usual limit is there for
// programs that use select().
void allowManyDescriptors() {
  rlimit limit{};
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
  limit.rlim_cur = limit.rlim_max;
  ::setrlimit(RLIMIT_NOFILE, &limit);
}

}  // namespace

int runProgram(std::span<const std::string> words) {
  // A closed pipe is an error of writing, with a message and a status, not a silent end in the
  // middle of a run.
  std::signal(SIGPIPE, SIG_IGN);
  allowManyDescriptors();
  try {
    registerAllOperations(OperationRegistry::shared());
    // Not a command: the program starts itself like this, over connections that nobody else has.
    if (words.size() == 2 && words[0] == "--worker")
      return box::runWorker(words[1], OperationRegistry::shared());
    return std::visit(Dispatch{OperationRegistry::shared()}, parseCommandLine(words));
  } catch (const UsageError& error) {
    say(error.what(), Tone::bad);
    return static_cast<int>(ExitStatus::wrongUse);
  } catch (const std::exception& error) {
    say(error.what(), Tone::bad);
    return static_cast<int>(ExitStatus::failed);
  }
}

}  // namespace quirn::cli
