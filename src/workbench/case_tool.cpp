// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/case_tool.h"

#include <algorithm>
#include <array>
#include <vector>

#include "core/input_file.h"
#include "platform/text.h"
#include "platform/unicode.h"
#include "workbench/lines.h"

namespace quirn {
namespace {

enum class WordForm { lower, upper, capitalised };

struct Style {
  std::string_view name;
  WordForm firstWord;
  WordForm otherWords;
  std::string_view separator;
};

constexpr std::array<Style, 8> styles{{
    {"camelCase", WordForm::lower, WordForm::capitalised, ""},
    {"PascalCase", WordForm::capitalised, WordForm::capitalised, ""},
    {"snake_case", WordForm::lower, WordForm::lower, "_"},
    {"kebab-case", WordForm::lower, WordForm::lower, "-"},
    {"CONSTANT_CASE", WordForm::upper, WordForm::upper, "_"},
    {"Title Case", WordForm::capitalised, WordForm::capitalised, " "},
    {"lower", WordForm::lower, WordForm::lower, " "},
    {"UPPER", WordForm::upper, WordForm::upper, " "},
}};
constexpr std::string_view defaultStyle = "snake_case";

// A character as a person sees it: a scalar with the marks on it.
struct Character {
  std::string_view text;  // empty behind the end
  bool isUpper = false;
  bool isLower = false;
};

Character firstCharacter(std::string_view text) {
  if (text.empty()) return {};
  const auto [scalar, length] = platform::firstScalar(text);
  std::size_t end = length;
  while (!platform::isCharacterBoundary(text, end)) end += platform::firstScalar(text.substr(end)).length;
  return {text.substr(0, end), platform::isUppercase(scalar), platform::isLowercase(scalar)};
}

// "brown Fox" of "brownFox", "HTTP Server" of "HTTPServer".
std::string withHumpsSplit(std::string_view line) {
  std::string text;
  Character last;
  Character current = firstCharacter(line);
  while (!current.text.empty()) {
    line.remove_prefix(current.text.size());
    const Character next = firstCharacter(line);
    const bool startsWord = current.isUpper && (last.isLower || (last.isUpper && next.isLower));
    if (startsWord) text += ' ';
    text += current.text;
    last = current;
    current = next;
  }
  return text;
}

bool isWordCharacter(char character) {
  return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
         (character >= '0' && character <= '9');
}

std::vector<std::string> wordsOf(std::string_view line) {
  std::vector<std::string> words;
  bool isInWord = false;
  for (const char character : withHumpsSplit(line)) {
    const bool continues = isInWord;
    isInWord = isWordCharacter(character);
    if (!isInWord) continue;
    if (!continues) words.emplace_back();
    words.back() += character;
  }
  return words;
}

std::string formed(const std::string& word, WordForm form) {
  switch (form) {
    case WordForm::lower: return lowerCased(word);
    case WordForm::upper: return upperCased(word);
    case WordForm::capitalised: break;
  }
  return upperCased(word.substr(0, 1)) + lowerCased(word.substr(1));
}

std::string recased(std::string_view line, const Style& style) {
  std::string text;
  bool isFirst = true;
  for (const std::string& word : wordsOf(line)) {
    if (!isFirst) text += style.separator;
    text += formed(word, isFirst ? style.firstWord : style.otherWords);
    isFirst = false;
  }
  return text;
}

const Style& styleNamed(std::string_view name) {
  const auto found = std::ranges::find(styles, name, &Style::name);
  return found == styles.end() ? styleNamed(defaultStyle) : *found;
}

std::string transform(std::string_view input, const TextToolOptions& options) {
  const Style& style = styleNamed(options.text("style", defaultStyle));
  return mappedLines(input, [&style](std::string_view line) { return recased(line, style); });
}

ChoiceControl styleControl() {
  ChoiceControl control{"style", "Style", {}, std::string(defaultStyle)};
  for (const Style& style : styles) control.options.emplace_back(style.name);
  return control;
}

}  // namespace

const TextTool& caseTool() {
  static const TextTool tool{
      .id = "dev.case",
      .name = "Case Converter",
      .shortName = "case",
      .icon = "textformat",
      .aliases = {"case", "camel", "snake", "kebab", "pascal", "title case"},
      .blurb = "Recase identifiers and titles between every common convention.",
      .inputPlaceholder = "Identifier or phrase per line…",
      .controls = {styleControl()},
      .sampleInput = "the quick brownFox\nHTTPServerError",
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
