// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Rows for the tests of text tools: what goes in, with which options, and what comes out.

#pragma once

#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <string>
#include <vector>

#include "workbench/text_tool.h"

namespace quirn::tests {

struct ToolRow {
  std::string loss;  // what a person would lose if this row failed
  std::string input;
  std::string output;  // or the message of the failure
  std::map<std::string, std::string> options;

  friend void PrintTo(const ToolRow& row, std::ostream* out) { *out << row.loss; }
};

// The output, or the message behind "! ".
inline std::string outcome(const TextTool& tool, std::string_view input,
                           const std::map<std::string, std::string>& options = {}) {
  TextToolOptions all = defaultOptions(tool);
  for (const auto& [key, value] : options) all.values[key] = value;
  try {
    return tool.transform(input, all);
  } catch (const TextToolError& error) {
    return "! " + error.message();
  }
}

inline void expectRows(const TextTool& tool, const std::vector<ToolRow>& rows) {
  for (const ToolRow& row : rows) {
    SCOPED_TRACE(row.loss);
    EXPECT_EQ(outcome(tool, row.input, row.options), row.output);
  }
}

inline std::string repeated(std::string_view text, std::size_t count) {
  std::string all;
  for (; count > 0; --count) all += text;
  return all;
}

}  // namespace quirn::tests
