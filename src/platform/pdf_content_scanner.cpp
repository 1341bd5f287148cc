// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_content_scanner.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string>

namespace quirn::platform {
namespace {

constexpr std::string_view space{"\0\t\n\f\r ", 6};
constexpr std::string_view delimiters = "()<>[]{}/%";

bool isSpace(char character) {
  return space.find(character) != std::string_view::npos;
}

bool isRegular(char character) {
  return !isSpace(character) && delimiters.find(character) == std::string_view::npos;
}

// Text follows the end of an inline image; its bytes may hold "EI" by chance.
bool looksLikeText(std::string_view bytes) {
  return std::ranges::all_of(bytes.substr(0, 16), [](char character) {
    return isSpace(character) ? character != '\0' : character > ' ' && character <= '~';
  });
}

bool beginsNumber(char character) {
  return (character >= '0' && character <= '9') || character == '+' || character == '-' || character == '.';
}

}  // namespace

std::optional<std::string_view> PDFContentScanner::next() {
  numberCount_ = 0;
  name_ = {};
  for (skipSpace(); !atEnd(); skipSpace()) {
    if (current() == '(') {
      skipString();
    } else if (current() == '/') {
      readName();
    } else if (!isRegular(current())) {
      skipBracket();
    } else if (beginsNumber(current())) {
      addNumber(readWord());
    } else {
      const std::string_view word = readWord();
      if (word == "true" || word == "false" || word == "null") continue;
      // An operator ends whatever was left open before it.
      openBrackets_ = 0;
      if (word == "BI") skipInlineImage();
      return word;
    }
  }
  endsInside_ = endsInside_ || openBrackets_ > 0;
  return std::nullopt;
}

std::optional<PDFMatrix> PDFContentScanner::matrix() const {
  if (numberCount_ < numbers_.size()) return std::nullopt;
  const auto& n = numbers_;
  return PDFMatrix{n[0], n[1], n[2], n[3], n[4], n[5]};
}

void PDFContentScanner::skipSpace() {
  while (!atEnd() && (isSpace(current()) || current() == '%')) {
    if (current() != '%') {
      ++position_;
    } else {
      position_ = std::min(content_.find_first_of("\r\n", position_), content_.size());
    }
  }
}

void PDFContentScanner::skipString() {
  long depth = 0;
  for (; !atEnd(); ++position_) {
    if (current() == '\\') {
      ++position_;
    } else if (current() == '(') {
      ++depth;
    } else if (current() == ')' && --depth == 0) {
      ++position_;
      return;
    }
  }
  endsInside_ = true;
}

// Also all of a hexadecimal string.
void PDFContentScanner::skipBracket() {
  const char bracket = content_[position_++];
  const bool isDoubled = (bracket == '<' || bracket == '>') && !atEnd() && current() == bracket;
  if (isDoubled) ++position_;
  if (bracket == '[' || (bracket == '<' && isDoubled)) ++openBrackets_;
  if (bracket == ']' || (bracket == '>' && isDoubled)) openBrackets_ = std::max(0L, openBrackets_ - 1);
  if (bracket != '<' || isDoubled) return;
  const std::size_t end = content_.find('>', position_);
  endsInside_ = end == std::string_view::npos;
  position_ = endsInside_ ? content_.size() : end + 1;
}

void PDFContentScanner::skipInlineImage() {
  const std::size_t data = content_.find("ID", position_);
  for (std::size_t end = content_.find("EI", data); end != std::string_view::npos; end = content_.find("EI", end + 1)) {
    const std::string_view rest = content_.substr(end + 2);
    if (isSpace(content_[end - 1]) && (rest.empty() || isSpace(rest.front())) && looksLikeText(rest)) {
      position_ = end + 2;
      return;
    }
  }
  position_ = content_.size();
  endsInside_ = true;
}

void PDFContentScanner::readName() {
  ++position_;
  name_ = readWord();
}

std::string_view PDFContentScanner::readWord() {
  const std::size_t begin = position_;
  while (!atEnd() && isRegular(current())) ++position_;
  return content_.substr(begin, position_ - begin);
}

void PDFContentScanner::addNumber(std::string_view word) {
  if (word.starts_with('+')) word.remove_prefix(1);
  double value = 0;
  std::from_chars(word.data(), word.data() + word.size(), value, std::chars_format::fixed);
  if (!std::isfinite(value)) value = 0;
  if (numberCount_ == numbers_.size()) {
    std::ranges::rotate(numbers_, numbers_.begin() + 1);
    numbers_.back() = value;
  } else {
    numbers_[numberCount_++] = value;
  }
}

PDFContentBalance balanceOf(std::string_view content) {
  PDFContentBalance balance;
  PDFContentScanner scanner(content);
  while (const auto word = scanner.next()) {
    if (*word == "q") {
      ++balance.unmatchedSaves;
    } else if (*word == "Q" && balance.unmatchedSaves > 0) {
      --balance.unmatchedSaves;
    } else if (*word == "Q") {
      ++balance.unmatchedRestores;
    }
  }
  balance.endsInside = scanner.endsInside();
  return balance;
}

}  // namespace quirn::platform
