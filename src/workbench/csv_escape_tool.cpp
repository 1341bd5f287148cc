// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/csv_escape_tool.h"

#include "workbench/lines.h"
#include "workbench/rewriting.h"

namespace quirn {
namespace {

std::string quoted(std::string_view field) {
  static constexpr ByteSet quote = bytesOf("\"");
  return '"' +
         rewritten(field, quote,
                   [](std::string& out, std::string_view, std::size_t at) {
                     out += "\"\"";
                     return at + 1;
                   }) +
         '"';
}

bool needsQuotes(std::string_view field) {
  return field.find_first_of(",\"\r\n") != std::string_view::npos;
}

std::string transform(std::string_view input, const TextToolOptions& options) {
  const bool always = options.boolean("always");
  return mappedLines(input, [always](std::string_view field) {
    return always || needsQuotes(field) ? quoted(field) : std::string(field);
  });
}

}  // namespace

const TextTool& csvEscapeTool() {
  static const TextTool tool{
      .id = "dev.csv-escape",
      .name = "CSV Field Escape",
      .shortName = "csv",
      .icon = "tablecells",
      .aliases = {"csv escape", "csv field", "rfc 4180", "quote csv"},
      .blurb = "Escape each line as one RFC 4180 CSV field, quoting when required.",
      .inputPlaceholder = "One field per line…",
      .outputExtension = "csv",
      .controls = {ToggleControl{"always", "Always quote", false}},
      .sampleInput = "Hello, \"World\"\nLine2",
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
