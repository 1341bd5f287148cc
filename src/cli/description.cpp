// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/description.h"

#include <fmt/format.h>

#include "cli/tool_description.h"
#include "core/reflection.h"
#include "workbench/all_text_tools.h"

namespace quirn::cli {
namespace {

using platform::JsonArray;
using platform::JsonNumber;
using platform::JsonObject;

JsonArray texts(const auto& strings) {
  JsonArray array;
  for (const auto& text : strings) array.emplace_back(text);
  return array;
}

JsonArray asJson(const Range& range) {
  return {JsonNumber{fmt::format("{}", range.lowest)}, JsonNumber{fmt::format("{}", range.highest)}};
}

bool isNumber(const Control& control) {
  return control.kind == Control::Kind::stepper || control.kind == Control::Kind::slider;
}

JsonObject asJson(const Control& control, const platform::JsonValue& defaultValue) {
  JsonObject object{{"key", control.key},
                    {"kind", enumeratorName(control.kind)},
                    {"label", control.label},
                    {"default", defaultValue}};
  if (isNumber(control)) {
    object.emplace_back("range", asJson(control.legal));
    object.emplace_back("suggestedRange", asJson(control.suggested));
    if (!control.unit.empty()) object.emplace_back("unit", control.unit);
  }
  if (control.kind == Control::Kind::choice) {
    JsonArray choices;
    for (const auto& [name, label] : control.options)
      choices.emplace_back(JsonObject{{"name", name}, {"label", label}});
    object.emplace_back("choices", std::move(choices));
  }
  if (control.isFromInput) object.emplace_back("fromInput", true);
  if (!control.placeholder.empty()) object.emplace_back("placeholder", control.placeholder);
  return object;
}

std::string asText(const Control& control, const OperationConfig& defaults) {
  std::string text = fmt::format("  {}  {}\n", control.key, control.label);
  for (const auto& [name, label] : control.options) text += fmt::format("      {:<10}  {}\n", name, label);
  if (control.options.empty()) text += fmt::format("      {}\n", control.accepted());
  if (!control.unit.empty()) text += fmt::format("      in {}\n", control.unit);
  if (control.isFromInput) return text + "      default: what the input says\n";
  const std::string value = control.read(defaults);
  return text + fmt::format("      default: {}\n", value.empty() ? "empty" : value);
}

}  // namespace

JsonObject identityAsJson(const OperationType& type) {
  const OperationInfo& info = type.info();
  return {
      {"operationID", info.operationID}, {"displayName", info.displayName}, {"category", enumeratorName(info.category)},
      {"iconName", info.iconName},       {"aliases", texts(info.aliases)},  {"built", type.isBuilt()}};
}

JsonObject descriptionAsJson(const OperationType& type) {
  JsonObject object = identityAsJson(type);
  if (!type.isBuilt()) return object;
  object.emplace_back("about", type.info().about);
  object.emplace_back("accepts", type.accepts().description());
  if (const TextTool* tool = textToolByID(type.info().operationID)) {
    for (auto& [key, value] : toolDetailsAsJson(*tool)) object.emplace_back(key, std::move(value));
    return object;
  }
  const Panel panel = type.defaultPanel();
  const JsonObject defaults = type.isConfigurable() ? panel.values(*type.defaultConfig()) : JsonObject();
  JsonArray controls;
  for (std::size_t i = 0; i < defaults.size(); ++i) {
    controls.emplace_back(asJson(panel.controls()[i], defaults[i].second));
  }
  object.emplace_back("controls", std::move(controls));
  object.emplace_back("notes", texts(panel.notes()));
  JsonArray limits;
  for (const Budget budget : type.budgets())
    limits.push_back(JsonObject{{"key", enumeratorName(budget)}, {"atMost", limitOf(budget)}});
  if (!limits.empty()) object.emplace_back("limits", std::move(limits));
  return object;
}

std::string descriptionAsText(const OperationType& type) {
  if (const TextTool* tool = textToolByID(type.info().operationID)) return toolAsText(*tool);
  const OperationInfo& info = type.info();
  if (!type.isBuilt()) {
    return fmt::format("{} — {}\nNot built yet.\n\nCategory: {}\nAliases:  {}\n", info.operationID, info.displayName,
                       enumeratorName(info.category), fmt::join(info.aliases, ", "));
  }
  std::string text = fmt::format("{} — {}\n{}\n\nCategory: {}\nAccepts:  {}\nAliases:  {}\n", info.operationID,
                                 info.displayName, info.about, enumeratorName(info.category),
                                 type.accepts().description(), fmt::join(info.aliases, ", "));
  if (!type.budgets().empty()) text += "\nLimits of a file:\n";
  for (const Budget budget : type.budgets())
    text += fmt::format("  at most {} {}\n", limitOf(budget), rowOf(budget).what);
  if (!type.isConfigurable()) return text + "\nNo settings.\n";
  text += "\nSettings (--set KEY=VALUE):\n";
  const auto defaults = type.defaultConfig();
  const Panel panel = type.configPanel(*defaults);
  for (const Control& control : panel.controls()) text += asText(control, *defaults);
  for (const std::string& note : panel.notes()) text += fmt::format("\n{}\n", note);
  return text;
}

}  // namespace quirn::cli
