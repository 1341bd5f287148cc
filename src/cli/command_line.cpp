// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/command_line.h"

#include <fmt/format.h>

#include <algorithm>
#include <utility>

#include "core/input_file.h"
#include "core/nearest_name.h"
#include "core/url.h"
#include "platform/lockdown.h"
#include "shell/window_start.h"

namespace quirn::cli {
namespace {

struct HelpArguments {
  std::string topic;
};

// The arguments of all commands; one parse fills those of one.
struct Parsed {
  OpenArguments open;
  RunArguments run;
  ToolArguments tool;
  ListArguments list;
  DescribeArguments describe;
  SuggestArguments suggest;
  SearchArguments search;
  UrlArguments url;
  HelpArguments help;
};

Option jsonOption(bool& json) {
  return {"--json", "", "Print JSON, on one line", [&json](const std::string&) { json = true; }};
}

[[noreturn]] void refuseArgument(std::string_view command, std::string_view argument) {
  throw UsageError(fmt::format("“{1}” is one argument too many. See “quirn help {0}”.", command, argument));
}

void require(bool given, std::string_view command, std::string_view what) {
  if (!given) throw UsageError(fmt::format("“quirn {0}” needs {1}. See “quirn help {0}”.", command, what));
}

// For a command that takes one argument.
std::function<void(std::string)> only(std::string command, std::string& target) {
  return [command = std::move(command), &target](std::string argument) {
    if (!target.empty()) refuseArgument(command, argument);
    target = std::move(argument);
  };
}

CommandSyntax openSyntax(OpenArguments& open) {
  return {.name = "open",
          .arguments = "[FILE]...",
          .summary = "Open the window, with these files in it",
          .options = {{"--operation", "OPERATION", "Begin this operation on them",
                       [&open](std::string operation) { open.operation = std::move(operation); }}},
          .addArgument = [&open](std::string location) { open.locations.push_back(std::move(location)); },
          .more =
              "Where a window is open already, the files go to that one. A FILE may also be a\n"
              "quirn:// link. “quirn” alone, on a desktop, does the same without files."};
}

CommandSyntax runSyntax(RunArguments& run) {
  return {.name = "run",
          .arguments = "OPERATION [FILE]...",
          .summary = "Run an operation on files and print the path of each output",
          .options = {{"--out", "DIR", "Put outputs in this folder instead of beside their inputs",
                       [&run](const std::string& folder) { run.out = located(folder); }},
                      {"--set", "KEY=VALUE", "Change a setting; “quirn describe OPERATION” names them",
                       [&run](std::string setting) { run.settings.push_back(std::move(setting)); }},
                      jsonOption(run.json),
                      {"--quiet", "", "Show no progress", [&run](const std::string&) { run.quiet = true; }, "-q"},
                      {"--verbose", "", "Tell more about an error", [&run](const std::string&) { run.verbose = true; },
                       "-v"}},
          .addArgument =
              [&run](std::string argument) {
                if (run.operation.empty()) {
                  require(!argument.empty(), "run", "an operation");
                  run.operation = std::move(argument);
                } else {
                  run.files.emplace_back(std::move(argument));
                }
              },
          .more =
              "Exit status: 0 all inputs done, 1 a failure, 2 wrong use, 130 interrupted.\n\n"
              "Example: quirn run text.hash-files --set algorithm=sha512 --out sums a.iso b.iso"};
}

Option flagOption(std::string name, std::string help, bool& flag) {
  return {std::move(name), "", std::move(help), [&flag](const std::string&) { flag = true; }};
}

CommandSyntax toolSyntax(ToolArguments& tool) {
  return {.name = "tool",
          .arguments = "TOOL [FILE]",
          .summary = "Run a text tool on a file or standard input and print its text",
          .options = {{"--set", "KEY=VALUE", "Change a setting; “quirn describe TOOL” names them",
                       [&tool](std::string setting) { tool.settings.push_back(std::move(setting)); }},
                      flagOption("--sample", "Run the tool on its sample", tool.sample),
                      flagOption("--raw", "Keep the line feed at the end of standard input", tool.raw),
                      flagOption("--save", "Save the text in a file and print its path", tool.save),
                      {"--out", "DIR", "Save it in this folder",
                       [&tool](const std::string& folder) {
                         tool.out = located(folder);
                         tool.save = true;
                       }},
                      jsonOption(tool.json)},
          .addArgument =
              [&tool](std::string argument) {
                if (tool.tool.empty()) {
                  tool.tool = std::move(argument);
                } else if (!tool.file) {
                  tool.file = located(argument);
                } else {
                  refuseArgument("tool", argument);
                }
              },
          .more =
              "TOOL is an identifier, or a short name that no other tool has. Without FILE, text comes\n"
              "from standard input, less one line feed at its end.\n\n"
              "Exit status: 0 done, 1 the tool can’t make sense of the text, 2 wrong use.\n\n"
              "Example: echo 'Hello' | quirn tool base64"};
}

CommandSyntax listSyntax(ListArguments& list) {
  return {.name = "list",
          .arguments = "",
          .summary = "List all operations",
          .options = {{"--category", "CATEGORY", "Only those of this category",
                       [&list](std::string category) { list.category = std::move(category); }},
                      jsonOption(list.json)},
          .addArgument = [](const std::string& argument) { refuseArgument("list", argument); },
          .more = ""};
}

CommandSyntax describeSyntax(DescribeArguments& describe) {
  return {.name = "describe",
          .arguments = "OPERATION",
          .summary = "Tell what an operation does, accepts and can be set to",
          .options = {jsonOption(describe.json)},
          .addArgument = only("describe", describe.operation),
          .more = ""};
}

CommandSyntax suggestSyntax(SuggestArguments& suggest) {
  return {.name = "suggest",
          .arguments = "FILE...",
          .summary = "List the operations that can run on exactly these files",
          .options = {jsonOption(suggest.json)},
          .addArgument = [&suggest](std::string file) { suggest.files.emplace_back(std::move(file)); },
          .more = ""};
}

CommandSyntax searchSyntax(SearchArguments& search) {
  return {.name = "search",
          .arguments = "WORD...",
          .summary = "Find operations by what you would call them",
          .options = {{"--for", "FILE", "Of equals, put first what can run on this file; repeatable",
                       [&search](std::string file) { search.files.emplace_back(std::move(file)); }},
                      jsonOption(search.json)},
          .addArgument = [&search](std::string word) { search.words.push_back(std::move(word)); },
          .more = "Example: quirn search jpg to pdf"};
}

CommandSyntax urlSyntax(UrlArguments& url) {
  return {.name = "url",
          .arguments = "URL",
          .summary = "Do what a quirn:// link asks for",
          .options = {{"--out", "DIR", "Put outputs in this folder instead of beside their inputs",
                       [&url](const std::string& folder) { url.out = located(folder); }},
                      jsonOption(url.json)},
          .addArgument = only("url", url.url),
          .more =
              "quirn://run?op=OPERATION&path=FILE&path=FILE runs an operation on the files;\n"
              "quirn://open?path=FILE lists the operations for them."};
}

CommandSyntax helpSyntax(HelpArguments& help) {
  return {.name = "help",
          .arguments = "[COMMAND]",
          .summary = "Print the help, or that on a command",
          .options = {},
          .addArgument = only("help", help.topic),
          .more = ""};
}

std::vector<CommandSyntax> allCommands(Parsed& parsed) {
  return {openSyntax(parsed.open),     runSyntax(parsed.run),           toolSyntax(parsed.tool),
          listSyntax(parsed.list),     describeSyntax(parsed.describe), suggestSyntax(parsed.suggest),
          searchSyntax(parsed.search), urlSyntax(parsed.url),           helpSyntax(parsed.help)};
}

const CommandSyntax& commandNamed(const std::vector<CommandSyntax>& commands, const std::string& name) {
  const auto found = std::ranges::find(commands, name, &CommandSyntax::name);
  if (found != commands.end()) return *found;
  std::vector<std::string> names;
  for (const CommandSyntax& command : commands) names.push_back(command.name);
  throw UsageError(
      fmt::format("There is no command “{}”. Accepted: {}.{}", name, fmt::join(names, ", "), didYouMean(name, names)));
}

// What protects against strangers' files, and is missing on this machine, belongs to what a person
// asks about a version.
std::string versionText() {
  const std::string gap = platform::lockDownGap();
  return fmt::format("quirn {}\n{}{}", QUIRN_VERSION, gap, gap.empty() ? "" : "\n");
}

Command chosen(Parsed parsed, const std::vector<CommandSyntax>& commands, const std::string& name) {
  if (name == "open") return std::move(parsed.open);
  if (name == "run") {
    require(!parsed.run.operation.empty(), name, "an operation");
    return std::move(parsed.run);
  }
  if (name == "tool") {
    require(!parsed.tool.tool.empty(), name, "a tool");
    return std::move(parsed.tool);
  }
  if (name == "list") return std::move(parsed.list);
  if (name == "describe") {
    require(!parsed.describe.operation.empty(), name, "an operation");
    return std::move(parsed.describe);
  }
  if (name == "suggest") {
    require(!parsed.suggest.files.empty(), name, "a file");
    return std::move(parsed.suggest);
  }
  if (name == "search") {
    require(!parsed.search.words.empty(), name, "a word");
    return std::move(parsed.search);
  }
  if (name == "url") {
    require(!parsed.url.url.empty(), name, "a URL");
    return std::move(parsed.url);
  }
  const std::string& topic = parsed.help.topic;
  return Printout{topic.empty() ? helpOnAll(commands) : helpOn(commandNamed(commands, topic))};
}

}  // namespace

std::vector<CommandSyntax> describedCommands() {
  Parsed parsed;
  std::vector<CommandSyntax> commands = allCommands(parsed);
  for (CommandSyntax& command : commands) {
    command.addArgument = nullptr;
    for (Option& option : command.options) option.set = nullptr;
  }
  return commands;
}

Command parseCommandLine(std::span<const std::string> words) {
  Parsed parsed;
  const std::vector<CommandSyntax> commands = allCommands(parsed);
  if (words.empty() && hasDisplay()) return OpenArguments();
  const std::string first = words.empty() ? "--help" : words.front();
  if (const auto url = parseUrl(first); url && url->scheme == "quirn")
    return OpenArguments{.operation = "", .locations = {words.begin(), words.end()}};
  if (first == "--help" || first == "-h") return Printout{helpOnAll(commands)};
  if (first == "--version") return Printout{versionText()};
  if (first.starts_with('-')) {
    throw UsageError(fmt::format("There is no option “{}”. Accepted: --help, --version.{}", first,
                                 didYouMean(first, std::vector<std::string>{"--help", "--version"})));
  }
  const CommandSyntax& command = commandNamed(commands, first);
  if (parseWords(command, words.subspan(1))) return Printout{helpOn(command)};
  return chosen(std::move(parsed), commands, command.name);
}

}  // namespace quirn::cli
