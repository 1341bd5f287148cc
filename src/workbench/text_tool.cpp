// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/text_tool.h"

#include <charconv>

namespace quirn {
namespace {

struct DefaultText {
  std::string operator()(const ToggleControl& control) const { return control.value ? "true" : "false"; }
  std::string operator()(const ChoiceControl& control) const { return control.value; }
  std::string operator()(const StepperControl& control) const { return std::to_string(control.value); }
  std::string operator()(const FieldControl& control) const { return control.value; }
};

}  // namespace

const std::string& keyOf(const TextToolControl& control) {
  return std::visit([](const auto& known) -> const std::string& { return known.key; }, control);
}

std::string TextToolOptions::text(std::string_view key, std::string_view fallback) const {
  const auto found = values.find(key);
  return found == values.end() ? std::string(fallback) : found->second;
}

std::int64_t TextToolOptions::integer(std::string_view key, std::int64_t fallback) const {
  const std::string digits = text(key, "");
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
  return error == std::errc() && end == digits.data() + digits.size() ? value : fallback;
}

bool TextToolOptions::boolean(std::string_view key) const {
  return text(key, "") == "true";
}

TextToolOptions defaultOptions(const TextTool& tool) {
  TextToolOptions options;
  for (const TextToolControl& control : tool.controls) {
    options.values[keyOf(control)] = std::visit(DefaultText(), control);
  }
  return options;
}

}  // namespace quirn
