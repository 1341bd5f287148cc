// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/structured_support.h"
#include "workbench/structured_tools.h"
#include "workbench/xml_format.h"
#include "workbench/xml_to_json.h"

namespace quirn {
namespace {

std::string toJson(std::string_view input) {
  try {
    return jsonFromXml(input).text(platform::JsonLayout::pretty, outputLimit(input.size()));
  } catch (const XmlError& error) {
    throw asToolError(error, "Invalid XML.");
  } catch (const platform::JsonError& error) {
    throw asToolError(error, "Couldn’t serialise JSON.");
  }
}

std::string toXml(std::string_view input) {
  const platform::JsonValue value = jsonInput(input);
  if (value.object() == nullptr && value.array() == nullptr) throw TextToolError("Invalid JSON.");
  try {
    return formattedXml(xmlFromJson(value), XmlLayout::pretty, outputLimit(input.size()));
  } catch (const XmlError& error) {
    throw asToolError(error, "Couldn’t write this as XML.");
  }
}

std::string convert(std::string_view input, const TextToolOptions& options) {
  return options.text("mode", "XML → JSON") == "JSON → XML" ? toXml(input) : toJson(input);
}

}  // namespace

const TextTool& xmlJsonTool() {
  static const TextTool tool{
      .id = "dev.xml-json",
      .name = "XML ↔ JSON",
      .shortName = "xml-json",
      .icon = "arrow.left.arrow.right",
      .aliases = {"xml to json", "json to xml", "xml json", "convert xml"},
      .blurb = R"(Convert XML to JSON (or back). Lossy — attributes become "@name", text "#text".)",
      .inputPlaceholder = "Paste XML or JSON…",
      .controls = {ChoiceControl{"mode", "Mode", {"XML → JSON", "JSON → XML"}, "XML → JSON"}},
      .sampleInput = R"(<note id="1"><to>Orla</to><body>Ship it</body></note>)",
      .transform = convert,
  };
  return tool;
}

}  // namespace quirn
