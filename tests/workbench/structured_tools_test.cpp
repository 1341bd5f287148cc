// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/structured_tools.h"

#include <gtest/gtest.h>

#include <array>

#include "workbench/date_text.h"
#include "workbench/tool_rows.h"

namespace quirn::tests {
namespace {

const std::array<const TextTool* (*)(), 8> tools = {[] { return &jsonTool(); },    [] { return &jsonPathTool(); },
                                                    [] { return &jwtTool(); },     [] { return &queryStringTool(); },
                                                    [] { return &regexTool(); },   [] { return &xmlTool(); },
                                                    [] { return &xmlJsonTool(); }, [] { return &xpathTool(); }};

TEST(StructuredTools, haveSamplesThatWork) {
  for (const auto tool : tools) {
    EXPECT_NE(outcome(*tool(), tool()->sampleInput).substr(0, 1), "!") << tool()->id;
    EXPECT_NE(outcome(*tool(), tool()->sampleInput), "No matches.") << tool()->id;
  }
}

TEST(StructuredTools, endOnAnyBytes) {
  const std::vector<std::string> inputs = {"",
                                           std::string(1 << 20, '\0'),
                                           std::string(1 << 20, '<'),
                                           std::string(1 << 20, '"'),
                                           std::string(1 << 20, '\xFF'),
                                           std::string(1 << 20, '&'),
                                           repeated("<a b='", 100'000),
                                           repeated("{\"a\":", 100'000),
                                           repeated("%", 100'000),
                                           repeated(".", 100'000)};
  for (const auto tool : tools) {
    for (const std::string& input : inputs) EXPECT_NO_THROW(outcome(*tool(), input)) << tool()->id;
  }
}

TEST(RelativeText, tellsDistances) {
  const std::vector<std::pair<double, std::string>> rows = {{0, "now"},
                                                            {-0.9, "now"},
                                                            {1, "1 second from now"},
                                                            {-59.4, "59 seconds ago"},
                                                            {-59.6, "60 seconds ago"},
                                                            {60, "1 minute from now"},
                                                            {-90, "2 minutes ago"},
                                                            {3600, "1 hour from now"},
                                                            {-86400, "1 day ago"},
                                                            {86400 * 2.5, "3 days from now"}};
  for (const auto& [seconds, text] : rows) EXPECT_EQ(relativeText(seconds), text) << seconds;
}

}  // namespace
}  // namespace quirn::tests
