// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/program.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

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
  OperationRegistry& registry;

  int operator()(const Printout& printout) const {
    print(printout.text);
    return static_cast<int>(ExitStatus::done);
  }
  int operator()(const RunArguments& arguments) const { return runCommand(registry, arguments); }
  int operator()(const ToolArguments& arguments) const { return toolCommand(arguments); }
  int operator()(const ListArguments& arguments) const { return listCommand(registry, arguments); }
  int operator()(const DescribeArguments& arguments) const { return describeCommand(registry, arguments); }
  int operator()(const SuggestArguments& arguments) const { return suggestCommand(registry, arguments); }
  int operator()(const SearchArguments& arguments) const { return searchCommand(registry, arguments); }
  int operator()(const UrlArguments& arguments) const { return urlCommand(registry, arguments); }
  int operator()(const OpenArguments& arguments) const { return openCommand(registry, arguments); }
};

// Outputs wait for the disk in groups, each with a descriptor; the usual limit is there for
// programs that use select().
void allowManyDescriptors() {
  rlimit limit{};
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) return;
  limit.rlim_cur = limit.rlim_max;
  ::setrlimit(RLIMIT_NOFILE, &limit);
}

// A program may be started with standard streams closed. The next file opened would take such a number, and what is
// meant for people would go into it.
void reserveStandardStreams() {
  for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(stream, F_GETFD) < 0) ::open("/dev/null", O_RDONLY);  // takes the lowest free number
  }
}

}  // namespace

int runProgram(std::span<const std::string> words) {
  // A closed pipe is an error of writing, with a message and a status, not a silent end in the
  // middle of a run.
  std::signal(SIGPIPE, SIG_IGN);
  // So is a limit on the size of files.
  std::signal(SIGXFSZ, SIG_IGN);
  reserveStandardStreams();
  allowManyDescriptors();
  try {
    registerAllOperations(OperationRegistry::shared());
    // Not a command: the program starts itself like this, over connections that nobody else has.
    if (words.size() == 2 && words[0] == "--worker") return box::runWorker(words[1], OperationRegistry::shared());
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
