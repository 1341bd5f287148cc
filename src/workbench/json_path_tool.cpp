// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/text.h"
#include "workbench/json_path.h"
#include "workbench/structured_support.h"
#include "workbench/structured_tools.h"

namespace quirn {
namespace {

std::string listed(const std::vector<const platform::JsonValue*>& matches, std::size_t limit) {
  if (matches.empty()) return "No matches.";
  std::string out = matchHeading(matches.size());
  for (const platform::JsonValue* match : matches) {
    if (match != matches.front()) out += '\n';
    out += match->string() != nullptr ? platform::repairedUtf8(*match->string()) : match->text();
    if (out.size() > limit) failForSize();
  }
  return out;
}

std::string query(std::string_view input, const TextToolOptions& options) {
  const std::string path = options.text("path", "$..title");
  const std::string_view expression = platform::trimmed(path);
  if (expression.empty()) throw TextToolError("Enter a JSONPath expression.");
  const platform::JsonValue document = jsonInput(input);
  return listed(json_path::matches(document, json_path::parsedSteps(expression)), outputLimit(input.size()));
}

}  // namespace

const TextTool& jsonPathTool() {
  static const TextTool tool{
      .id = "dev.jsonpath",
      .name = "JSONPath Tester",
      .shortName = "jsonpath",
      .icon = "magnifyingglass",
      .aliases = {"jsonpath", "json query", "query json", "jmespath"},
      .blurb = "Query JSON with $, .key, [n], [*], and ..recursive — see every match.",
      .inputPlaceholder = "Paste JSON…",
      .fileMatch = {"json"},
      .controls = {FieldControl{"path", "JSONPath", "$..title", "$.store.book[*].title"}},
      .sampleInput = R"({"store":{"book":[{"title":"A","price":5},{"title":"B","price":9}]}})",
      .transform = query,
  };
  return tool;
}

}  // namespace quirn
