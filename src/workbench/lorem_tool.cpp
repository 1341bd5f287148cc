// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/lorem_tool.h"

#include <array>

#include "core/input_file.h"
#include "platform/random.h"
#include "workbench/lines.h"

namespace quirn {
namespace {

constexpr std::array<std::string_view, 63> words{"lorem",      "ipsum",        "dolor",
                                                 "sit",        "amet",         "consectetur",
                                                 "adipiscing", "elit",         "sed",
                                                 "do",         "eiusmod",      "tempor",
                                                 "incididunt", "ut",           "labore",
                                                 "et",         "dolore",       "magna",
                                                 "aliqua",     "enim",         "ad",
                                                 "minim",      "veniam",       "quis",
                                                 "nostrud",    "exercitation", "ullamco",
                                                 "laboris",    "nisi",         "aliquip",
                                                 "ex",         "ea",           "commodo",
                                                 "consequat",  "duis",         "aute",
                                                 "irure",      "in",           "reprehenderit",
                                                 "voluptate",  "velit",        "esse",
                                                 "cillum",     "eu",           "fugiat",
                                                 "nulla",      "pariatur",     "excepteur",
                                                 "sint",       "occaecat",     "cupidatat",
                                                 "non",        "proident",     "sunt",
                                                 "culpa",      "qui",          "officia",
                                                 "deserunt",   "mollit",       "anim",
                                                 "id",         "est",          "laborum"};

std::string phrase(std::int64_t wordCount) {
  std::string text = joined(wordCount, " ", [] { return words[platform::randomBelow(words.size())]; });
  return upperCased(text.substr(0, 1)) + (text.empty() ? "" : text.substr(1));
}

// `least` and up to `more` on top, each number as likely as any other.
std::int64_t between(std::int64_t least, std::size_t more) {
  return least + static_cast<std::int64_t>(platform::randomBelow(more + 1));
}

std::string sentence() {
  return phrase(between(8, 7)) + ".";
}

std::string paragraph() {
  return joined(between(3, 2), " ", &sentence);
}

std::string transform(std::string_view, const TextToolOptions& options) {
  const std::string unit = options.text("unit", "Paragraphs");
  const std::int64_t count = options.integer("count", 3);
  if (unit == "Words") return phrase(count);
  if (unit == "Sentences") return joined(count, " ", &sentence);
  return joined(count, "\n\n", &paragraph);
}

}  // namespace

const TextTool& loremTool() {
  static const TextTool tool{
      .id = "dev.lorem",
      .name = "Lorem Ipsum",
      .shortName = "lorem",
      .icon = "text.alignleft",
      .aliases = {"lorem", "lorem ipsum", "placeholder", "dummy text", "filler"},
      .blurb = "Generate classic placeholder text.",
      .isGenerator = true,
      .controls = {ChoiceControl{"unit", "Unit", {"Paragraphs", "Sentences", "Words"}, "Paragraphs"},
                   StepperControl{"count", "Count", 1, 50, 3}},
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
