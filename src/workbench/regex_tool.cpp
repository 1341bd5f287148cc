// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>

#include "platform/regular_expression.h"
#include "workbench/structured_support.h"
#include "workbench/structured_tools.h"

namespace quirn {
namespace {

std::string described(std::size_t number, const platform::RegexMatch& match) {
  std::string lines = fmt::format("Match {} [{}–{}]: {}", number, match.start, match.end, match.text);
  for (std::size_t group = 1; group <= match.groups.size(); ++group) {
    lines += fmt::format("\n  group {}: {}", group, match.groups[group - 1].value_or("(no match)"));
  }
  return lines;
}

std::string listed(const std::string& pattern, platform::RegexOptions flags, std::string_view input) {
  // Short of a second for a page; a honest pattern gets through some 20 MB in each further one.
  const auto patience = std::chrono::milliseconds(700 + input.size() / 20'000);
  std::string lines;
  std::size_t count = 0;
  platform::forEachRegexMatch(pattern, flags, input, patience, [&](const platform::RegexMatch& match) {
    if (count > 0) lines += '\n';
    lines += described(++count, match);
    if (lines.size() > outputLimit(input.size())) failForSize();
  });
  return count == 0 ? "No matches." : matchHeading(count) + lines;
}

std::string test(std::string_view input, const TextToolOptions& options) {
  const std::string pattern = options.text("pattern", R"([\w.]+@[\w.]+)");
  if (pattern.empty()) throw TextToolError("Enter a regex pattern.");
  try {
    return listed(pattern, {options.boolean("i"), options.boolean("m"), options.boolean("s")}, input);
  } catch (const platform::RegexError& error) {
    if (error.reason() == platform::RegexError::Reason::pattern) {
      throw TextToolError("That isn’t a valid regular expression — " + error.message());
    }
    throw TextToolError("This pattern takes too long on this text — try a simpler one, or less text.");
  }
}

}  // namespace

const TextTool& regexTool() {
  static const TextTool tool{
      .id = "dev.regex",
      .name = "Regex Tester",
      .shortName = "regex",
      .icon = "magnifyingglass",
      .aliases = {"regex", "regexp", "regular expression", "pattern", "match"},
      .blurb = "Test a regular expression against text and list every match.",
      .inputPlaceholder = "Subject text to match against…",
      .controls = {FieldControl{"pattern", "Pattern", R"([\w.]+@[\w.]+)", "regex"},
                   ToggleControl{"i", "Ignore case", false}, ToggleControl{"m", "Multiline (^$)", false},
                   ToggleControl{"s", "Dot matches newline", false}},
      .sampleInput = "orla@example.com, sam@example.org",
      .transform = test,
  };
  return tool;
}

}  // namespace quirn
