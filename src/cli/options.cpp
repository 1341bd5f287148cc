// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/options.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

#include "cli/exit_status.h"
#include "core/nearest_name.h"

namespace quirn::cli {
namespace {

constexpr std::size_t leftColumn = 22;

bool asksForHelp(std::string_view word) {
  return word == "--help" || word == "-h";
}

const Option& optionNamed(const CommandSyntax& syntax, const std::string& name) {
  const auto isNamed = [&](const Option& option) { return option.name == name || option.letter == name; };
  const auto found = std::ranges::find_if(syntax.options, isNamed);
  if (found != syntax.options.end()) return *found;
  std::vector<std::string> names{"--help"};
  for (const Option& option : syntax.options) names.push_back(option.name);
  throw UsageError(fmt::format("“quirn {}” has no option “{}”. Accepted: {}.{}", syntax.name, name,
                               fmt::join(names, ", "), didYouMean(name, names)));
}

std::string row(std::string_view left, std::string_view right) {
  return fmt::format("  {:<{}}  {}\n", left, leftColumn, right);
}

std::string spelling(const Option& option) {
  const std::string letter = option.letter.empty() ? "" : option.letter + ", ";
  return letter + option.name + (option.value.empty() ? "" : " " + option.value);
}

}  // namespace

bool parseWords(const CommandSyntax& syntax, std::span<const std::string> words) {
  bool optionsEnded = false;
  while (!words.empty()) {
    const std::string& word = words.front();
    words = words.subspan(1);
    const bool isOption = !optionsEnded && word.size() > 1 && word.starts_with('-');
    if (!isOption) {
      syntax.addArgument(word);
      continue;
    }
    if (asksForHelp(word)) return true;
    if (word == "--") {
      optionsEnded = true;
      continue;
    }
    const std::size_t equals = word.starts_with("--") ? word.find('=') : std::string::npos;
    const Option& option = optionNamed(syntax, word.substr(0, equals));
    if (option.value.empty()) {
      if (equals != std::string::npos) throw UsageError(fmt::format("“{}” takes no value.", option.name));
      option.set({});
      continue;
    }
    std::string value;
    if (equals != std::string::npos) {
      value = word.substr(equals + 1);
    } else if (!words.empty()) {
      value = words.front();
      words = words.subspan(1);
    }
    if (value.empty()) throw UsageError(fmt::format("“{0}” needs a value: {0} {1}.", option.name, option.value));
    option.set(std::move(value));
  }
  return false;
}

std::string helpOn(const CommandSyntax& syntax) {
  const std::string arguments = syntax.arguments.empty() ? "" : " " + syntax.arguments;
  std::string text =
      fmt::format("{}.\n\nUsage: quirn {}{} [OPTION]...\n\nOptions:\n", syntax.summary, syntax.name, arguments);
  for (const Option& option : syntax.options) text += row(spelling(option), option.help);
  text += row("-h, --help", "Print this help");
  return syntax.more.empty() ? text : text + "\n" + syntax.more + "\n";
}

std::string helpOnAll(std::span<const CommandSyntax> commands) {
  std::string text =
      "Quirn, a toolbox for files. Everything runs on this machine; inputs are never changed.\n\n"
      "Usage: quirn COMMAND [ARGUMENT]...\n\nCommands:\n";
  for (const CommandSyntax& command : commands) text += row(command.name, command.summary);
  return text + "\n" + row("--help", "Print this help") + row("--version", "Print the version") +
         "\n“quirn help COMMAND” tells more about a command.\n";
}

}  // namespace quirn::cli
