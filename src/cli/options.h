// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Commands with their options as data: parsing, help and whatever else tells of the command line
// read the same declarations. Arguments that are file names are taken as they are, whatever they
// look like; behind "--", nothing is an option any more.

#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace quirn::cli {

struct Option {
  std::string name;   // "--out"
  std::string value;  // what stands for its value in the help, "DIR"; empty for an option without one
  std::string help;
  std::function<void(std::string)> set;  // called with the value, or an empty one
  std::string letter = {};               // "-q"
};

struct CommandSyntax {
  std::string name;
  std::string arguments;  // "OPERATION [FILE]..."
  std::string summary;    // one line
  std::vector<Option> options;
  std::function<void(std::string)> addArgument;
  std::string more;  // shown below the options
};

// Hands every option and argument of the words behind a command's name to its syntax. Throws
// UsageError for what is none of it. True if the words ask for the command's help instead.
[[nodiscard]] bool parseWords(const CommandSyntax& syntax, std::span<const std::string> words);

std::string helpOn(const CommandSyntax& syntax);
std::string helpOnAll(std::span<const CommandSyntax> commands);

}  // namespace quirn::cli
