// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Text tools by table: what goes in, what is set, what comes out.

#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>

#include "workbench/all_text_tools.h"

namespace quirn::testing {

using Settings = std::initializer_list<std::pair<std::string_view, std::string_view>>;

inline std::string outputOf(std::string_view id, std::string_view input, Settings settings = {}) {
  const TextTool* const tool = textToolByID(id);
  if (tool == nullptr) return "no such tool";
  TextToolOptions options = defaultOptions(*tool);
  for (const auto& [key, value] : settings) options.values[std::string(key)] = value;
  try {
    return tool->transform(input, options);
  } catch (const TextToolError& error) {
    return "error: " + error.message();
  }
}

struct ToolCase {
  std::string_view sentence;
  std::string_view tool;
  Settings settings;
  std::string_view input;
  std::string_view output;  // "error: " and the message where the tool refuses
};

inline void expectAll(std::initializer_list<ToolCase> cases) {
  for (const ToolCase& row : cases)
    EXPECT_EQ(outputOf(row.tool, row.input, row.settings), row.output) << row.tool << ": " << row.sentence;
}

}  // namespace quirn::testing
