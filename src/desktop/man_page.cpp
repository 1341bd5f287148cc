// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "desktop/man_page.h"

#include <fmt/format.h>

#include <string>

#include "cli/command_line.h"
#include "shell/category_title.h"

namespace quirn::desktop {
namespace {

std::string paragraphs(const cli::CommandSyntax& command) {
  const std::string arguments = command.arguments.empty() ? "" : " " + troff(command.arguments);
  std::string text = fmt::format(".SS \"quirn {}{}\"\n{}.\n", command.name, arguments, troff(command.summary));
  for (const cli::Option& option : command.options) {
    const std::string value = option.value.empty() ? "" : " \\fI" + troff(option.value) + "\\fR";
    const std::string letter = option.letter.empty() ? "" : "\\fB" + troff(option.letter) + "\\fR, ";
    text += fmt::format(".TP\n{}\\fB{}\\fR{}\n{}\n", letter, troff(option.name), value, troff(option.help));
  }
  if (!command.more.empty()) text += fmt::format(".PP\n{}\n", troff(command.more));
  return text;
}

std::string operationList(const OperationRegistry& registry) {
  std::string text;
  std::optional<OperationCategory> family;
  for (const OperationType& type : registry.operations()) {
    const OperationInfo& info = type.info();
    if (!type.isBuilt()) continue;
    if (family != info.category) text += fmt::format(".SS \"{}\"\n", categoryTitle(info.category));
    family = info.category;
    text +=
        fmt::format(".TP\n\\fB{}\\fR\n{}. {}\n", troff(info.operationID), troff(info.displayName), troff(info.about));
  }
  return text;
}

}  // namespace

std::string troff(std::string_view text) {
  std::string value;
  bool isLineStart = true;
  for (const char character : text) {
    if (isLineStart && (character == '.' || character == '\'')) value += "\\&";
    if (character == '\\')
      value += "\\e";
    else if (character == '-')
      value += "\\-";
    else
      value += character;
    isLineStart = character == '\n';
  }
  return value;
}

GeneratedFile manPage(const OperationRegistry& registry) {
  std::string text =
      ".TH QUIRN 1 \"\" \"Quirn " QUIRN_VERSION
      "\" \"User Commands\"\n.SH NAME\nquirn \\- a toolbox for files\n.SH SYNOPSIS\n"
      ".B quirn\n[\\fICOMMAND\\fR [\\fIARGUMENT\\fR]...]\n.SH DESCRIPTION\n"
      "Name some files, and Quirn proposes the operations that can run on exactly those. Everything runs on this\n"
      "machine; inputs are never changed, and nothing that exists is ever overwritten. Without a command, on a\n"
      "desktop, it opens its window.\n.SH COMMANDS\n";
  for (const cli::CommandSyntax& command : cli::describedCommands()) text += paragraphs(command);
  text +=
      ".SH EXIT STATUS\n.TP\n0\nAll inputs are done; the outputs listed are whole and on the disk.\n"
      ".TP\n1\nThe run failed, or some input did.\n.TP\n2\nWrong use.\n.TP\n130\nStopped with Ctrl\\-C.\n"
      ".SH OPERATIONS\n\\fBquirn describe\\fR \\fIOPERATION\\fR tells what each can be set to.\n";
  text += operationList(registry);
  return {.path = "man/man1/quirn.1", .text = std::move(text)};
}

}  // namespace quirn::desktop
