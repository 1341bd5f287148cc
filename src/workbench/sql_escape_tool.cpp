// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/sql_escape_tool.h"

#include "workbench/rewriting.h"

namespace quirn {
namespace {

std::string transform(std::string_view input, const TextToolOptions& options) {
  static constexpr ByteSet quote = bytesOf("'");
  std::string escaped = rewritten(input, quote, [](std::string& out, std::string_view, std::size_t at) {
    out += "''";
    return at + 1;
  });
  return options.boolean("wrap") ? "'" + std::move(escaped) + "'" : escaped;
}

}  // namespace

const TextTool& sqlEscapeTool() {
  static const TextTool tool{
      .id = "dev.sql-escape",
      .name = "SQL String Escape",
      .shortName = "sql",
      .icon = "tablecells",
      .aliases = {"sql escape", "sql string", "escape quote", "sql literal"},
      .blurb = "Escape a string for a SQL literal by doubling single quotes.",
      .inputPlaceholder = "Value to escape for SQL…",
      .controls = {ToggleControl{"wrap", "Wrap in quotes", false}},
      .sampleInput = "O'Reilly",
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
