// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/structured_tools.h"

#include <gtest/gtest.h>

#include <array>

#include "workbench/structured_support.h"
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

TEST(StructuredSupport, tellsDistances) {
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

TEST(StructuredSupport, readsBase64) {
  // RFC 4648, 10.
  EXPECT_EQ(base64Decoded(""), "");
  EXPECT_EQ(base64Decoded("Zg=="), "f");
  EXPECT_EQ(base64Decoded("Zm8="), "fo");
  EXPECT_EQ(base64Decoded("Zm9vYmFy"), "foobar");
  for (const auto* const text : {"Z", "Zg", "Zg=", "====", "Z===", "Zg==Zg==", "Zm 9", "Zm9*"}) {
    EXPECT_EQ(base64Decoded(text), std::nullopt) << text;
  }
}

TEST(StructuredSupport, tellsInstants) {
  EXPECT_EQ(isoUtc(0), "1970-01-01T00:00:00Z");
  EXPECT_EQ(isoUtc(951868799), "2000-02-29T23:59:59Z");
  EXPECT_EQ(isoUtc(-1), "1969-12-31T23:59:59Z");
  EXPECT_EQ(isoUtc(253402300799), "9999-12-31T23:59:59Z");
  EXPECT_EQ(isoUtc(253402300800), std::nullopt);
}

}  // namespace
}  // namespace quirn::tests
