// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The program's command line: which commands there are, what they take, and their help.

#pragma once

#include <span>
#include <string>
#include <variant>
#include <vector>

#include "cli/catalog_commands.h"
#include "cli/open_command.h"
#include "cli/options.h"
#include "cli/run_command.h"
#include "cli/search_command.h"
#include "cli/tool_command.h"
#include "cli/url_command.h"

namespace quirn::cli {

// Text to be printed: help or the version.
struct Printout {
  std::string text;
};

using Command = std::variant<Printout, RunArguments, ToolArguments, ListArguments, DescribeArguments, SuggestArguments,
                             SearchArguments, UrlArguments, OpenArguments>;

// `words` are those behind the program's name. Throws UsageError, whose message names what is
// accepted.
Command parseCommandLine(std::span<const std::string> words);

// All commands for whoever describes them; they take no words.
std::vector<CommandSyntax> describedCommands();

}  // namespace quirn::cli
