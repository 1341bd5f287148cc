// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <map>

#include "platform/text.h"
#include "workbench/percent_coding.h"
#include "workbench/structured_support.h"
#include "workbench/structured_tools.h"

namespace quirn {
namespace {

using platform::JsonArray;
using platform::JsonObject;
using platform::JsonValue;

std::string decoded(std::string_view piece) {
  std::string text(piece);
  std::ranges::replace(text, '+', ' ');
  return percentDecoded(text).value_or(text);
}

std::string jsonFromQuery(std::string_view input) {
  std::string_view rest = platform::trimmed(input);
  if (rest.starts_with('?')) rest.remove_prefix(1);
  std::map<std::string, JsonArray> valuesByName;
  while (!rest.empty()) {
    const std::string_view piece = rest.substr(0, rest.find('&'));
    rest.remove_prefix(std::min(piece.size() + 1, rest.size()));
    if (piece.empty()) continue;
    const std::size_t equals = std::min(piece.find('='), piece.size());
    const std::string_view value = piece.substr(std::min(equals + 1, piece.size()));
    valuesByName[decoded(piece.substr(0, equals))].emplace_back(decoded(value));
  }
  JsonObject object;
  for (auto& [name, values] : valuesByName) {
    object.emplace_back(name, values.size() == 1 ? std::move(values.front()) : JsonValue(std::move(values)));
  }
  return JsonValue(std::move(object)).text(platform::JsonLayout::pretty);
}

void appendPair(std::string& query, std::string_view name, const JsonValue& value) {
  if (!query.empty()) query += '&';
  const std::string text = value.string() != nullptr ? *value.string() : value.text();
  query += percentEncoded(platform::repairedUtf8(name)) + '=' + percentEncoded(platform::repairedUtf8(text));
}

std::string queryFromJson(std::string_view input) {
  const std::string advice = R"(Provide a JSON object, e.g. {"a":"1","b":["x","y"]}.)";
  JsonValue document = jsonInput(input, advice);
  if (document.object() == nullptr) throw TextToolError(advice);
  document.sortKeys();
  std::string query;
  for (const auto& [name, value] : *document.object()) {
    if (value.array() == nullptr) {
      appendPair(query, name, value);
      continue;
    }
    for (const JsonValue& item : *value.array()) appendPair(query, name, item);
  }
  return query;
}

std::string convert(std::string_view input, const TextToolOptions& options) {
  return options.text("mode", "Query→JSON") == "Query→JSON" ? jsonFromQuery(input) : queryFromJson(input);
}

}  // namespace

const TextTool& queryStringTool() {
  static const TextTool tool{
      .id = "dev.querystring",
      .name = "Query String ↔ JSON",
      .shortName = "query",
      .icon = "questionmark.app",
      .aliases = {"query string", "querystring", "url params", "search params", "qs"},
      .blurb = "Convert a URL query string to JSON and back.",
      .inputPlaceholder = R"(a=1&b=two  or  {"a":"1"}…)",
      .outputExtension = "json",
      .controls = {ChoiceControl{"mode", "Mode", {"Query→JSON", "JSON→Query"}, "Query→JSON"}},
      .sampleInput = "?q=hello+world&tag=a&tag=b&page=2",
      .transform = convert,
  };
  return tool;
}

}  // namespace quirn
