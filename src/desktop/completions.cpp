// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "desktop/completions.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "cli/command_line.h"
#include "core/reflection.h"
#include "workbench/all_text_tools.h"

namespace quirn::desktop {
namespace {

using Words = std::vector<std::string>;

// In single quotes, for all three shells: what would end them is left out.
std::string plain(std::string_view text) {
  std::string value(text);
  std::erase_if(value, [](char character) { return character == '\'' || character == '\\' || character == '\n'; });
  return value;
}

// Everything that completions are made of, in words.
struct Vocabulary {
  std::vector<cli::CommandSyntax> commands = cli::describedCommands();
  std::vector<std::pair<std::string, std::string>> operations;  // identifier, name
  std::vector<std::pair<std::string, std::string>> tools;
  std::vector<std::pair<std::string, Words>> settings;  // of an identifier: "algorithm=sha256", "password="
  Words categories;

  explicit Vocabulary(const OperationRegistry& registry) {
    for (std::size_t i = 0; i < enumeratorCount<OperationCategory>(); ++i)
      categories.emplace_back(enumeratorName(static_cast<OperationCategory>(i)));
    for (const OperationType& type : registry.operations()) {
      if (type.isBuilt()) add(type);
    }
  }

 private:
  void add(const OperationType& type) {
    const std::string id(type.info().operationID);
    (type.isInteractive() ? tools : operations).emplace_back(id, plain(type.info().displayName));
    Words words;
    for (const Control& control : type.defaultPanel().controls()) addValues(words, control);
    if (!words.empty()) settings.emplace_back(id, std::move(words));
  }
  static void addValues(Words& words, const Control& control) {
    if (control.kind == Control::Kind::toggle) {
      words.insert(words.end(), {control.key + "=true", control.key + "=false"});
    } else if (control.kind == Control::Kind::choice) {
      for (const Control::Option& option : control.options) words.push_back(control.key + "=" + option.name);
    } else {
      words.push_back(control.key + "=");
    }
  }
};

Words firsts(const std::vector<std::pair<std::string, std::string>>& pairs) {
  Words words;
  for (const auto& [first, second] : pairs) words.push_back(first);
  return words;
}

Words optionsOf(const cli::CommandSyntax& command) {
  Words words{"--help"};
  for (const cli::Option& option : command.options) words.push_back(option.name);
  return words;
}

Words commandNames(const Vocabulary& vocabulary) {
  Words words;
  for (const cli::CommandSyntax& command : vocabulary.commands) words.push_back(command.name);
  return words;
}

std::string bash(const Vocabulary& words) {
  std::string options, settings;
  for (const auto& command : words.commands)
    options += fmt::format("    {}) options='{}' ;;\n", command.name, fmt::join(optionsOf(command), " "));
  for (const auto& [id, values] : words.settings)
    settings += fmt::format("    {}) values='{}' ;;\n", id, fmt::join(values, " "));
  return fmt::format(
      R"(# bash completion for quirn
_quirn() {{
  local current=${{COMP_WORDS[COMP_CWORD]}} before=${{COMP_WORDS[COMP_CWORD-1]}} command=${{COMP_WORDS[1]}}
  local options='' values='' operations='{0}' tools='{1}'
  COMPREPLY=()
  if ((COMP_CWORD == 1)); then
    mapfile -t COMPREPLY < <(compgen -W '{2} --help --version' -- "$current")
    return
  fi
  case $command in
{3}  esac
  case $before in
    --operation) mapfile -t COMPREPLY < <(compgen -W "$operations $tools" -- "$current"); return ;;
    --category) mapfile -t COMPREPLY < <(compgen -W '{4}' -- "$current"); return ;;
    --out) compopt -o filenames; mapfile -t COMPREPLY < <(compgen -d -- "$current"); return ;;
  esac
  if [[ $before == --set || $before == '=' ]]; then
    case ${{COMP_WORDS[2]}} in
{5}    esac
    [[ $before == '=' ]] && values=$(printf '%s\n' $values | sed -n "s/^${{COMP_WORDS[COMP_CWORD-2]}}=//p")
    compopt -o nospace
    mapfile -t COMPREPLY < <(compgen -W "$values" -- "$current")
    return
  fi
  if [[ $current == -* ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
  elif ((COMP_CWORD == 2)) && [[ $command == run ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$operations" -- "$current")
  elif ((COMP_CWORD == 2)) && [[ $command == tool ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$tools" -- "$current")
  elif ((COMP_CWORD == 2)) && [[ $command == describe ]]; then
    mapfile -t COMPREPLY < <(compgen -W "$operations $tools" -- "$current")
  elif ((COMP_CWORD == 2)) && [[ $command == help ]]; then
    mapfile -t COMPREPLY < <(compgen -W '{2}' -- "$current")
  else
    compopt -o filenames
    mapfile -t COMPREPLY < <(compgen -f -- "$current")
  fi
}}
complete -F _quirn quirn
)",
      fmt::join(firsts(words.operations), " "), fmt::join(firsts(words.tools), " "),
      fmt::join(commandNames(words), " "), options, fmt::join(words.categories, " "), settings);
}

// "text.hash-files:Hash Files", as zsh's _describe reads it.
std::string described(const std::vector<std::pair<std::string, std::string>>& pairs) {
  std::string text;
  for (const auto& [id, name] : pairs) text += fmt::format("    '{}:{}'\n", id, name);
  return text;
}

std::string zsh(const Vocabulary& words) {
  std::string commands, options, settings;
  for (const auto& command : words.commands) {
    commands += fmt::format("    '{}:{}'\n", command.name, plain(command.summary));
    options += fmt::format("    {}) options=({}) ;;\n", command.name, fmt::join(optionsOf(command), " "));
  }
  for (const auto& [id, values] : words.settings)
    settings += fmt::format("    {}) values=({}) ;;\n", id, fmt::join(values, " "));
  return fmt::format(
      R"(#compdef quirn
# zsh completion for quirn
_quirn() {{
  local -a commands operations tools options values
  commands=(
{0}  )
  operations=(
{1}  )
  tools=(
{2}  )
  if (( CURRENT == 2 )); then
    _describe command commands
    return
  fi
  case $words[2] in
{3}  esac
  case $words[CURRENT-1] in
    --operation) _describe operation operations; return ;;
    --category) compadd -- {4}; return ;;
    --out) _files -/; return ;;
    --set)
      case $words[3] in
{5}      esac
      compadd -S '' -- $values
      return ;;
  esac
  if [[ $words[CURRENT] == -* ]]; then
    compadd -- $options
  elif (( CURRENT == 3 )) && [[ $words[2] == run ]]; then
    _describe operation operations
  elif (( CURRENT == 3 )) && [[ $words[2] == tool ]]; then
    _describe tool tools
  elif (( CURRENT == 3 )) && [[ $words[2] == describe ]]; then
    _describe operation operations -- tools
  elif (( CURRENT == 3 )) && [[ $words[2] == help ]]; then
    _describe command commands
  else
    _files
  fi
}}
_quirn "$@"
)",
      commands, described(words.operations), described(words.tools), options, fmt::join(words.categories, " "),
      settings);
}

std::string fish(const Vocabulary& words) {
  const Words names = commandNames(words);
  std::string text = fmt::format("# fish completion for quirn\nset -l commands {}\n", fmt::join(names, " "));
  const std::string none = "not __fish_seen_subcommand_from $commands";
  for (const auto& command : words.commands) {
    text += fmt::format("complete -c quirn -f -n '{}' -a {} -d '{}'\n", none, command.name, plain(command.summary));
    for (const cli::Option& option : command.options) {
      text += fmt::format("complete -c quirn -n '__fish_seen_subcommand_from {}' -l {} {}-d '{}'\n", command.name,
                          option.name.substr(2), option.value.empty() ? "" : "-r ", plain(option.help));
    }
  }
  const auto addAll = [&text](const auto& pairs, std::string_view commands) {
    for (const auto& [id, name] : pairs) {
      text += fmt::format("complete -c quirn -n '__fish_seen_subcommand_from {}' -a {} -d '{}'\n", commands, id, name);
    }
  };
  addAll(words.operations, "run describe");
  addAll(words.tools, "tool describe");
  for (const auto& [id, values] : words.settings) {
    text += fmt::format("complete -c quirn -n '__fish_seen_subcommand_from {}' -l set -x -a '{}'\n", id,
                        fmt::join(values, " "));
  }
  return text;
}

}  // namespace

std::vector<GeneratedFile> completions(const OperationRegistry& registry) {
  const Vocabulary words(registry);
  return {{"bash-completion/completions/quirn", bash(words)},
          {"zsh/vendor-completions/_quirn", zsh(words)},
          {"fish/vendor_completions.d/quirn.fish", fish(words)}};
}

}  // namespace quirn::desktop
