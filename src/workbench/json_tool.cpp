// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/json_format.h"
#include "platform/text.h"
#include "workbench/structured_support.h"
#include "workbench/structured_tools.h"

namespace quirn {
namespace {

using platform::JsonLayout;

std::string sortedJson(std::string_view text, JsonLayout layout) {
  platform::JsonValue value = platform::parsedJson(text);
  value.sortKeys();
  return value.text(layout, outputLimit(text.size()));
}

std::string format(std::string_view input, const TextToolOptions& options) {
  const std::string_view text = platform::trimmed(input);
  if (text.empty()) return "";
  const JsonLayout layout = options.text("mode", "Pretty") == "Pretty" ? JsonLayout::pretty : JsonLayout::compact;
  try {
    if (options.boolean("sort")) return sortedJson(text, layout);
    return platform::formattedJson(text, layout, outputLimit(text.size()));
  } catch (const platform::JsonError& error) {
    throw asToolError(error, "Invalid JSON.");
  }
}

}  // namespace

const TextTool& jsonTool() {
  static const TextTool tool{
      .id = "dev.json",
      .name = "JSON Format",
      .shortName = "json",
      .icon = "curlybraces",
      .aliases = {"json", "format json", "minify json", "validate json", "prettify", "beautify"},
      .blurb = "Pretty-print, minify, or validate JSON.",
      .inputPlaceholder = "Paste JSON…",
      .outputExtension = "json",
      .fileMatch = {"json"},
      .controls = {ChoiceControl{"mode", "Mode", {"Pretty", "Minify"}, "Pretty"},
                   ToggleControl{"sort", "Sort keys", false}},
      .sampleInput = R"({"b":1,"a":[3,2,1],"nested":{"y":true,"x":null}})",
      .transform = format,
  };
  return tool;
}

}  // namespace quirn
