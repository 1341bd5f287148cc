// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <array>
#include <random>

#include "platform/random.h"
#include "platform/uuid.h"
#include "workbench/lines.h"
#include "workbench/password_tool.h"
#include "workbench/tool_cases.h"

namespace quirn::testing {
namespace {

using ::testing::Each;
using ::testing::MatchesRegex;
using ::testing::SizeIs;

std::vector<std::string> linesIn(std::string_view text) {
  std::vector<std::string> lines;
  forEachPiece(text, '\n', [&](std::string_view line) { lines.emplace_back(line); });
  return lines;
}

TEST(Generators, identifiersHaveTheirForm) {
  EXPECT_THAT(
      linesIn(outputOf("dev.uuid", "")),
      AllOf(SizeIs(5), Each(MatchesRegex("[0-9a-f]{8}-[0-9a-f]{4}-4[0-9a-f]{3}-[89ab][0-9a-f]{3}-[0-9a-f]{12}"))));
  EXPECT_THAT(linesIn(outputOf("dev.uuid", "",
                               {{"count", "500"}, {"version", "v7"}, {"uppercase", "true"}, {"braces", "true"}})),
              AllOf(SizeIs(500),
                    Each(MatchesRegex("\\{[0-9A-F]{8}-[0-9A-F]{4}-7[0-9A-F]{3}-[89AB][0-9A-F]{3}-[0-9A-F]{12}\\}"))));
  EXPECT_THAT(linesIn(outputOf("dev.ulid", "", {{"count", "100"}})),
              AllOf(SizeIs(100), Each(MatchesRegex("0[0-9A-HJKMNP-TV-Z]{25}"))));
  EXPECT_THAT(linesIn(outputOf("dev.nanoid", "", {{"size", "64"}, {"count", "100"}})),
              AllOf(SizeIs(100), Each(MatchesRegex("[A-Za-z0-9_-]{64}"))));
}

TEST(Generators, orderedIdentifiersHoldTheirTime) {
  EXPECT_TRUE(platform::Uuid::ordered(0x0123'4567'89AB).text().starts_with("01234567-89ab-7"));
  EXPECT_LT(platform::Uuid::ordered(1), platform::Uuid::ordered(2));
}

TEST(Generators, passwordsSayWhatTheyAreWorth) {
  const auto lines = linesIn(outputOf("dev.password", ""));
  ASSERT_THAT(lines, SizeIs(7));
  EXPECT_THAT(std::vector(lines.begin(), lines.begin() + 5), Each(SizeIs(20)));
  EXPECT_EQ(lines[5], "");
  EXPECT_EQ(lines[6], "# ~126 bits of entropy each (78-char alphabet)");
  const std::string plain =
      outputOf("dev.password", "",
               {{"length", "128"}, {"count", "50"}, {"upper", "false"}, {"digits", "false"}, {"symbols", "false"}});
  EXPECT_THAT(plain, ::testing::EndsWith("# ~594 bits of entropy each (25-char alphabet)"));
  EXPECT_EQ(plain.substr(0, 50 * 129).find_first_not_of("abcdefghijkmnopqrstuvwxyz\n"), std::string::npos);
  EXPECT_THROW(passwordsFrom("a", 20, 5), TextToolError);
}

TEST(Generators, fillerTextHasTheAskedForShape) {
  EXPECT_THAT(outputOf("dev.lorem", "", {{"unit", "Words"}, {"count", "4"}}), MatchesRegex("[A-Z][a-z]*( [a-z]+){3}"));
  for (int i = 0; i < 50; ++i) {
    EXPECT_THAT(outputOf("dev.lorem", "", {{"unit", "Sentences"}, {"count", "1"}}),
                MatchesRegex("[A-Z][a-z]*( [a-z]+){7,14}\\."));
    EXPECT_THAT(outputOf("dev.lorem", "", {{"count", "1"}}), MatchesRegex("([A-Z][a-z ]*\\. ){2,4}[A-Z][a-z ]*\\."));
  }
  EXPECT_THAT(linesIn(outputOf("dev.lorem", "")), SizeIs(5)) << "three paragraphs, empty lines between";
}

TEST(Generators, eachCallGivesAnother) {
  for (const std::string_view id : {"dev.uuid", "dev.ulid", "dev.nanoid", "dev.password", "dev.lorem"})
    EXPECT_NE(outputOf(id, ""), outputOf(id, "")) << id;
}

// With 2^64 / 3 as the unit, a draw without rejection would favour 0.
TEST(Draw, rejectsWhatWouldFavourANumber) {
  std::vector<std::uint64_t> bits{0, 0x5555'5555'5555'5555, 0x5555'5555'5555'5556, ~0ULL};
  std::size_t next = 0;
  const auto source = [&] { return bits.at(next++); };
  EXPECT_EQ(platform::drawBelow(3, source), 0U);
  EXPECT_EQ(next, 2U) << "the product 0 stands below 2^64 mod 3 and is thrown away";
  EXPECT_EQ(platform::drawBelow(3, source), 1U);
  EXPECT_EQ(platform::drawBelow(3, source), 2U);
  EXPECT_EQ(platform::drawBelow(1, [] { return 7ULL; }), 0U);
}

TEST(Draw, givesEveryNumberEquallyOften) {
  std::mt19937_64 source(1);  // NOLINT(bugprone-random-generator-seed): the same draws every time
  std::array<int, 78> counts{};
  for (int i = 0; i < 780'000; ++i) ++counts.at(platform::drawBelow(counts.size(), std::ref(source)));
  double chiSquare = 0;
  for (const int count : counts) chiSquare += (count - 10'000.0) * (count - 10'000.0) / 10'000.0;
  EXPECT_LT(chiSquare, 140) << "77 degrees of freedom: more than this once in 50,000";
}

}  // namespace
}  // namespace quirn::testing
