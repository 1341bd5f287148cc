// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/tool_command.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <system_error>
#include <utility>

#include "cli/console.h"
#include "core/nearest_name.h"
#include "core/operation_error.h"
#include "core/reflection.h"
#include "platform/json.h"
#include "workbench/all_text_tools.h"
#include "workbench/tool_input.h"
#include "workbench/tool_options.h"
#include "workbench/tool_output.h"
#include "workbench/tool_run.h"

namespace quirn::cli {
namespace {

using platform::JsonObject;

[[noreturn]] void refuseToolName(const std::string& name) {
  std::vector<std::string> names;
  for (const TextTool* tool : allTextTools()) {
    names.push_back(tool->id);
    names.push_back(tool->shortName);
  }
  throw UsageError(fmt::format("There is no text tool “{}”.{} “quirn list” names all.", name, didYouMean(name, names)));
}

TextToolOptions optionsFrom(const TextTool& tool, const std::vector<std::string>& settings) {
  TextToolOptions options = defaultOptions(tool);
  for (const std::string& setting : settings) {
    const std::size_t equals = setting.find('=');
    if (equals == std::string::npos) throw UsageError(fmt::format("“--set {}” has no “=”: write KEY=VALUE.", setting));
    try {
      setOption(tool, options, std::string_view(setting).substr(0, equals),
                std::string_view(setting).substr(equals + 1));
    } catch (const SettingError& error) {
      throw UsageError(error.what());
    }
  }
  return options;
}

// All of standard input. A file in its place is read the same way, from where it stands.
std::string standardInput() {
  constexpr std::size_t chunk = 1 << 18;
  std::string text;
  for (;;) {
    const std::size_t size = text.size();
    if (std::cmp_greater(size, mostInputBytes))
      throw OperationError::unsupportedInput("The input is more than a tool can hold in memory.");
    text.resize(size + std::max(chunk, size / 2));
    const ssize_t count = ::read(STDIN_FILENO, text.data() + size, text.size() - size);
    text.resize(size + static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
    if (count == 0) return text;
    if (count < 0 && errno != EINTR)
      throw OperationError::readFailed("standard input", std::generic_category().message(errno));
  }
}

class ToolCommand {
 public:
  explicit ToolCommand(const ToolArguments& arguments)
      : arguments_(arguments), tool_(toolNamed(arguments.tool)), options_(optionsFrom(tool_, arguments.settings)) {
    if (arguments_.file && tool_.isGenerator)
      throw UsageError(fmt::format("{} makes its text itself and takes no file.", tool_.name));
    if (arguments_.file && arguments_.sample)
      throw UsageError("“--sample” takes the place of a file: leave one of them out.");
  }

  int run() const {
    try {
      const ToolRun run = runTool(tool_, input(), options_);
      if (run.errorMessage) throw TextToolError(*run.errorMessage);
      return report(run.output);
    } catch (const TextToolError& error) {
      return reportError("textTool", error.message());
    } catch (const OperationError& error) {
      return reportError(enumeratorName(error.kind()), error.userMessage());
    }
  }

 private:
  std::string input() const {
    if (tool_.isGenerator) return "";
    if (arguments_.sample) return tool_.sampleInput;
    if (arguments_.file) return toolInputOf(tool_, *arguments_.file);
    if (::isatty(STDIN_FILENO) == 1) {
      say(tool_.inputPlaceholder + " Name a file, or send text through a pipe.");
      return "";
    }
    std::string bytes = standardInput();
    if (!arguments_.raw && bytes.ends_with('\n')) bytes.pop_back();
    return toolInput(tool_, std::move(bytes));
  }

  int report(const std::string& output) const {
    std::optional<std::filesystem::path> path;
    if (arguments_.save) path = saved(output);
    if (arguments_.json) {
      JsonObject object{{"tool", tool_.id}, {"output", output}};
      if (path) object.emplace_back("path", path->native());
      printLine(platform::JsonValue(std::move(object)).text());
    } else if (path) {
      printLine(path->native());
    } else {
      print(output);
      const bool endsLine = output.empty() || output.ends_with('\n');
      if (::isatty(STDOUT_FILENO) == 1 && !endsLine) print("\n");
    }
    return static_cast<int>(ExitStatus::done);
  }

  std::filesystem::path saved(const std::string& output) const {
    const auto& file = arguments_.file;
    const auto besideFile = file ? file->parent_path() : std::filesystem::current_path();
    return saveToolOutput(tool_, file, arguments_.out.value_or(besideFile), output).url;
  }

  int reportError(std::string_view kind, const std::string& message) const {
    if (arguments_.json) {
      const JsonObject details{{"kind", kind}, {"message", message}};
      printLine(platform::JsonValue(JsonObject{{"tool", tool_.id}, {"error", details}}).text());
    }
    say(message, Tone::bad);
    return static_cast<int>(ExitStatus::failed);
  }

  const ToolArguments& arguments_;
  const TextTool& tool_;
  TextToolOptions options_;
};

}  // namespace

const TextTool& toolNamed(const std::string& name) {
  if (const TextTool* tool = textToolByID(name)) return *tool;
  std::vector<const TextTool*> found;
  std::vector<std::string> identifiers;
  for (const TextTool* tool : allTextTools()) {
    if (tool->shortName != name) continue;
    found.push_back(tool);
    identifiers.push_back(tool->id);
  }
  if (found.empty()) refuseToolName(name);
  if (found.size() > 1) {
    throw UsageError(
        fmt::format("“{}” is the short name of several tools: write {}.", name, fmt::join(identifiers, " or ")));
  }
  return *found.front();
}

int toolCommand(const ToolArguments& arguments) {
  return ToolCommand(arguments).run();
}

}  // namespace quirn::cli
