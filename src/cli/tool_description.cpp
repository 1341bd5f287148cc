// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/tool_description.h"

#include <fmt/format.h>

#include "core/reflection.h"
#include "workbench/tool_options.h"

namespace quirn::cli {
namespace {

using platform::JsonArray;
using platform::JsonObject;

// Keys and names are those that the settings of other operations are described with.
struct ControlAsJson {
  JsonObject operator()(const ToggleControl& control) const {
    return {{"key", control.key}, {"kind", "toggle"}, {"label", control.label}, {"default", control.value}};
  }
  JsonObject operator()(const ChoiceControl& control) const {
    JsonArray choices;
    for (const std::string& option : control.options)
      choices.emplace_back(JsonObject{{"name", option}, {"label", option}});
    return {{"key", control.key},
            {"kind", "choice"},
            {"label", control.label},
            {"default", control.value},
            {"choices", std::move(choices)}};
  }
  JsonObject operator()(const StepperControl& control) const {
    const JsonArray range{control.lowest, control.highest};
    return {{"key", control.key},       {"kind", "stepper"}, {"label", control.label},
            {"default", control.value}, {"range", range},    {"suggestedRange", range}};
  }
  JsonObject operator()(const FieldControl& control) const {
    return {{"key", control.key},
            {"kind", "field"},
            {"label", control.label},
            {"default", control.value},
            {"placeholder", control.placeholder}};
  }
};

struct Label {
  std::string operator()(const auto& control) const { return control.label; }
};

std::string controlsAsText(const TextTool& tool) {
  if (tool.controls.empty()) return "\nNo settings.\n";
  std::string text = "\nSettings (--set KEY=VALUE):\n";
  const TextToolOptions defaults = defaultOptions(tool);
  for (const TextToolControl& control : tool.controls) {
    const std::string& key = keyOf(control);
    const std::string value = defaults.text(key, "");
    text += fmt::format("  {}  {}\n      {}\n      default: {}\n", key, std::visit(Label(), control),
                        acceptedValues(control), value.empty() ? "empty" : value);
  }
  return text;
}

// Each line of the sample, moved in.
std::string sampleAsText(const std::string& sample) {
  if (sample.empty()) return "";
  std::string text = "\nSample (--sample):\n  ";
  for (const char character : sample) text += character == '\n' ? "\n  " : std::string(1, character);
  return text + "\n";
}

}  // namespace

JsonObject toolDetailsAsJson(const TextTool& tool) {
  JsonArray controls;
  for (const TextToolControl& control : tool.controls) controls.emplace_back(std::visit(ControlAsJson(), control));
  return {{"shortName", tool.shortName},
          {"isGenerator", tool.isGenerator},
          {"inputPlaceholder", tool.inputPlaceholder},
          {"outputExtension", tool.outputExtension},
          {"sampleInput", tool.sampleInput},
          {"controls", std::move(controls)}};
}

std::string toolAsText(const TextTool& tool) {
  const std::string input = tool.isGenerator ? "none" : tool.inputPlaceholder;
  const std::string arguments = tool.isGenerator ? "" : " [FILE]";
  return fmt::format("{} — {}\n{}\n\nCategory: {}\nUsage:    quirn tool {}{}\nInput:    {}\nAliases:  {}\n", tool.id,
                     tool.name, tool.blurb, enumeratorName(tool.category), tool.id, arguments, input,
                     fmt::join(tool.aliases, ", ")) +
         controlsAsText(tool) + sampleAsText(tool.sampleInput);
}

}  // namespace quirn::cli
