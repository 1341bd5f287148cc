// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shell/command_text.h"

#include <algorithm>

#include "core/panel.h"

namespace quirn {
namespace {

bool isPlain(char character) {
  constexpr std::string_view others = "_@%+=:,./-";
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9') || others.find(character) != std::string_view::npos;
}

class Command {
 public:
  Command(std::string_view verb, std::string_view subject) : text_("quirn ") {
    text_ += verb;
    add(subject);
  }
  void add(std::string_view word) { text_ += " " + shellQuoted(word); }
  void set(std::string_view key, std::string_view value) {
    add("--set");
    add(std::string(key) + "=" + std::string(value));
  }
  std::string text() && { return std::move(text_); }

 private:
  std::string text_;
};

void addSettings(Command& command, const OperationType& type, const OperationConfig& config) {
  const auto defaults = type.defaultConfig();
  for (const Control& control : type.configPanel(config).controls()) {
    if (control.kind == Control::Kind::secret || control.kind == Control::Kind::newSecret) continue;
    const std::string value = control.read(config);
    if (value != control.read(*defaults)) command.set(control.key, value);
  }
}

}  // namespace

std::string shellQuoted(std::string_view word) {
  if (!word.empty() && std::ranges::all_of(word, isPlain)) return std::string(word);
  std::string quoted = "'";
  for (const char character : word) quoted += character == '\'' ? std::string("'\\''") : std::string(1, character);
  return quoted + "'";
}

std::string runCommandText(const OperationType& type, const OperationConfig* config, std::span<const InputFile> inputs,
                           const std::optional<std::filesystem::path>& outputDirectory) {
  Command command("run", type.info().operationID);
  if (config != nullptr && type.owns(*config)) addSettings(command, type, *config);
  if (outputDirectory) {
    command.add("--out");
    command.add(outputDirectory->native());
  }
  for (const InputFile& input : inputs) command.add(input.url.native());
  return std::move(command).text();
}

std::string toolCommandText(const TextTool& tool, const TextToolOptions& options,
                            const std::optional<std::filesystem::path>& seed) {
  Command command("tool", tool.id);
  const TextToolOptions defaults = defaultOptions(tool);
  for (const auto& [key, value] : options.values) {
    if (value != defaults.text(key, "")) command.set(key, value);
  }
  if (seed) command.add(seed->native());
  return std::move(command).text();
}

}  // namespace quirn
