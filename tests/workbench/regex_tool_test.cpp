// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <chrono>

#include "workbench/structured_tools.h"
#include "workbench/tool_rows.h"

namespace quirn::tests {
namespace {

ToolRow row(std::string loss, std::string pattern, std::string input, std::string output,
            std::map<std::string, std::string> flags = {}) {
  flags["pattern"] = std::move(pattern);
  return {std::move(loss), std::move(input), std::move(output), std::move(flags)};
}

TEST(RegexTool, listsMatches) {
  expectRows(
      regexTool(),
      {
          row("an emoji is two UTF-16 units", "b", "😀b", "1 match:\n\nMatch 1 [2–3]: b"),
          row("a group that took no part is told", "(a)|(b)", "ab",
              "2 matches:\n\nMatch 1 [0–1]: a\n  group 1: a\n  group 2: (no match)\nMatch 2 [1–2]: b\n  group 1: (no "
              "match)\n  group 2: b"),
          row("an empty match moves on", "x*", "ax",
              "3 matches:\n\nMatch 1 [0–0]: \nMatch 2 [1–2]: x\nMatch 3 [2–2]: "),
          row("case counts", "É", "é", "No matches."),
          row("or does not", "É", "é", "1 match:\n\nMatch 1 [0–1]: é", {{"i", "true"}}),
          row("anchors are those of the text", "^b", "a\nb", "No matches."),
          row("or of lines", "^b$", "a\nb\nc", "1 match:\n\nMatch 1 [2–3]: b", {{"m", "true"}}),
          row("a dot stops at the line", "a.b", "a\nb", "No matches."),
          row("or goes on", "a.b", "a\nb", "1 match:\n\nMatch 1 [0–3]: a\nb", {{"s", "true"}}),
          row("an empty text can match", "^$", "", "1 match:\n\nMatch 1 [0–0]: "),
          row("bytes that are no text are stood for", "\\x{FFFD}", "\xFF", "1 match:\n\nMatch 1 [0–1]: \xEF\xBF\xBD"),
          row("a NUL is a character", "\\x00", std::string("a\0", 2), std::string("1 match:\n\nMatch 1 [1–2]: \0", 28)),
          row("look-behind, names and properties are ICU's", "(?<=\\p{Lu})(?<n>\\d+)", "A12 b3",
              "1 match:\n\nMatch 1 [1–3]: 12\n  group 1: 12"),
      });
  EXPECT_EQ(outcome(regexTool(), regexTool().sampleInput).substr(0, 10), "2 matches:");
}

TEST(RegexTool, tellsWhatIsWrong) {
  expectRows(regexTool(),
             {
                 row("nothing to look for", "", "x", "! Enter a regex pattern."),
                 row("a parenthesis", "a(b", "x",
                     "! That isn’t a valid regular expression — the parentheses don’t match (line 1, character 3)."),
                 row("a bracket", "[a", "x",
                     "! That isn’t a valid regular expression — a square bracket is not closed (line 1, character 2)."),
                 row("a star of nothing", "*", "x",
                     "! That isn’t a valid regular expression — the syntax is wrong (line 1, character 1)."),
             });
}

TEST(RegexTool, catastrophesEndWithinASecond) {
  const std::string reason = "! This pattern takes too long on this text — try a simpler one, or less text.";
  const std::string text(5000, 'a');
  for (const std::string pattern : {"(a+)+$b", "(a|aa)+$b", "(.*)*x{2}", "(?:a*)*b"}) {
    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(outcome(regexTool(), text, {{"pattern", pattern}}), reason) << pattern;
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(5))
        << pattern << ", a slow machine allowed for";
  }
}

TEST(RegexTool, doesNotExplode) {
  const std::string result = outcome(regexTool(), std::string(400'000, 'a'), {{"pattern", repeated("()", 200)}});
  EXPECT_EQ(result.front(), '!');
}

}  // namespace
}  // namespace quirn::tests
