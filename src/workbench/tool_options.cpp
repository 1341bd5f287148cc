// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/tool_options.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <optional>
#include <vector>

#include "core/input_file.h"
#include "core/nearest_name.h"

namespace quirn {
namespace {

// The one option that `text` spells, or begins and no other.
std::optional<std::string> optionMeantBy(const ChoiceControl& control, std::string_view text) {
  if (std::ranges::find(control.options, text) != control.options.end()) return std::string(text);
  const std::string wanted = lowerCased(text);
  std::vector<std::string> beginningSo;
  for (const std::string& option : control.options) {
    const std::string known = lowerCased(option);
    if (known == wanted) return option;
    if (known.starts_with(wanted)) beginningSo.push_back(option);
  }
  return beginningSo.size() == 1 ? std::optional(beginningSo.front()) : std::nullopt;
}

struct Accepted {
  std::string operator()(const ToggleControl&) const { return "true, false"; }
  std::string operator()(const ChoiceControl& control) const {
    return fmt::format("{}", fmt::join(control.options, ", "));
  }
  std::string operator()(const StepperControl& control) const {
    return fmt::format("a whole number from {} to {}", control.lowest, control.highest);
  }
  std::string operator()(const FieldControl&) const { return "any text"; }
};

// The value as the options hold it; nothing for one that is not accepted.
struct Parse {
  std::string_view text;

  std::optional<std::string> operator()(const ToggleControl&) const {
    return text == "true" || text == "false" ? std::optional(std::string(text)) : std::nullopt;
  }
  std::optional<std::string> operator()(const ChoiceControl& control) const { return optionMeantBy(control, text); }
  std::optional<std::string> operator()(const StepperControl& control) const {
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    const bool isNumber = error == std::errc() && stop == end;
    const bool fits = number >= control.lowest && number <= control.highest;
    return isNumber && fits ? std::optional(std::to_string(number)) : std::nullopt;
  }
  std::optional<std::string> operator()(const FieldControl&) const { return std::string(text); }
};

[[noreturn]] void refuseKey(const TextTool& tool, std::string_view key) {
  if (tool.controls.empty()) throw SettingError(fmt::format("There is no setting “{}”: {} has none.", key, tool.name));
  std::vector<std::string> keys;
  for (const TextToolControl& control : tool.controls) keys.push_back(keyOf(control));
  throw SettingError(
      fmt::format("There is no setting “{}”. Accepted: {}.{}", key, fmt::join(keys, ", "), didYouMean(key, keys)));
}

// The option closest to what was written, in whichever case: "SHA-256" for "sha256".
std::string nearestOption(const TextToolControl& control, std::string_view value) {
  const auto* choice = std::get_if<ChoiceControl>(&control);
  if (choice == nullptr) return "";
  std::vector<std::string> known;
  for (const std::string& option : choice->options) known.push_back(lowerCased(option));
  const auto nearest = nearestName(lowerCased(value), known);
  if (!nearest) return "";
  const auto index = std::ranges::find(known, *nearest) - known.begin();
  return didYouMean(choice->options[static_cast<std::size_t>(index)], choice->options);
}

[[noreturn]] void refuseValue(const TextToolControl& control, std::string_view value) {
  throw SettingError(fmt::format("“{}” is not accepted for {}. Accepted: {}.{}", value, keyOf(control),
                                 acceptedValues(control), nearestOption(control, value)));
}

}  // namespace

std::string acceptedValues(const TextToolControl& control) {
  return std::visit(Accepted(), control);
}

void setOption(const TextTool& tool, TextToolOptions& options, std::string_view key, std::string_view value) {
  const auto control = std::ranges::find(tool.controls, key, &keyOf);
  if (control == tool.controls.end()) refuseKey(tool, key);
  auto parsed = std::visit(Parse{value}, *control);
  if (!parsed) refuseValue(*control, value);
  options.values[keyOf(*control)] = *std::move(parsed);
}

TextToolOptions clamped(const TextTool& tool, TextToolOptions options) {
  for (const TextToolControl& control : tool.controls) {
    const auto* stepper = std::get_if<StepperControl>(&control);
    if (stepper == nullptr) continue;
    const std::int64_t value = options.integer(stepper->key, stepper->value);
    options.values[stepper->key] = std::to_string(std::clamp(value, stepper->lowest, stepper->highest));
  }
  return options;
}

}  // namespace quirn
