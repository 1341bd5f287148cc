// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/slug_tool.h"

#include "platform/unicode.h"
#include "workbench/lines.h"

namespace quirn {
namespace {

bool isKept(char character) {
  return (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9');
}

std::string slugOf(std::string_view line, std::string_view separator) {
  std::string slug;
  bool isBetweenWords = false;
  for (const char character : line) {
    if (!isKept(character)) {
      isBetweenWords = true;
      continue;
    }
    if (isBetweenWords && !slug.empty()) slug += separator;
    isBetweenWords = false;
    slug += character;
  }
  return slug;
}

std::string transform(std::string_view input, const TextToolOptions& options) {
  const std::string separator = options.text("sep", "-");
  return mappedLines(platform::lowercase(platform::withoutDiacritics(input)),
                     [&](std::string_view line) { return slugOf(line, separator); });
}

}  // namespace

const TextTool& slugTool() {
  static const TextTool tool{
      .id = "dev.slug",
      .name = "Slug Generator",
      .shortName = "slug",
      .icon = "link",
      .aliases = {"slug", "url slug", "permalink", "kebab"},
      .blurb = "Turn any title into a clean URL slug.",
      .inputPlaceholder = "A Title to Slugify…",
      .controls = {ChoiceControl{"sep", "Separator", {"-", "_"}, "-"}},
      .sampleInput = "Hello, World! — Quirn’s 1st Release",
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
