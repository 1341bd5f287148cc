// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Rows of what a tool is given and what it answers.

#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "workbench/text_tool.h"

namespace quirn::tests {

using ToolSettings = std::vector<std::pair<std::string, std::string>>;

// The output, or "error: " and the message. What isn't set is as at first.
inline std::string answer(const TextTool& tool, std::string_view input, const ToolSettings& settings = {}) {
  TextToolOptions options = defaultOptions(tool);
  for (const auto& [key, value] : settings) options.values[key] = value;
  try {
    return tool.transform(input, options);
  } catch (const TextToolError& error) {
    return "error: " + error.message();
  }
}

struct AnswerRow {
  std::string loss;  // what a user would lose
  std::string input;
  std::string expected;
  ToolSettings settings = {};
};

inline void expectAnswers(const TextTool& tool, const std::vector<AnswerRow>& rows) {
  for (const AnswerRow& row : rows) EXPECT_EQ(answer(tool, row.input, row.settings), row.expected) << row.loss;
}

// Output and message hold the part.
inline void expectParts(const TextTool& tool, const std::vector<AnswerRow>& rows) {
  for (const AnswerRow& row : rows) {
    const std::string given = answer(tool, row.input, row.settings);
    EXPECT_NE(given.find(row.expected), std::string::npos) << row.loss << "\n" << given;
  }
}

}  // namespace quirn::tests
