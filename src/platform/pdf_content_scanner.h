// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Reads the operators of a content stream one by one (ISO 32000-1, 7.8.2). It understands no more of them than where
// they end, so that strings, dictionaries and the bytes of inline images aren't taken for operators. Never fails:
// what makes no sense is passed over.

#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string_view>

#include "platform/pdf_geometry.h"

namespace quirn::platform {

class PDFContentScanner {
 public:
  // The bytes outlive the scanner.
  explicit PDFContentScanner(std::string_view content) : content_(content) {}

  // The next operator, "BI" standing for a whole inline image; nothing at the end.
  std::optional<std::string_view> next();

  // Of the operator that next() gave: its numbers, the last six at most; the same as a matrix, if there are six; and
  // the last name before it, without its slash and with its escapes as they stand.
  std::span<const double> numbers() const { return std::span(numbers_).first(numberCount_); }
  std::optional<PDFMatrix> matrix() const;
  std::string_view name() const { return name_; }

  // Whether the content broke off inside of a string, dictionary, array or inline image: what is appended to it would
  // be swallowed.
  bool endsInside() const { return endsInside_; }

 private:
  char current() const { return content_[position_]; }
  bool atEnd() const { return position_ >= content_.size(); }
  void skipSpace();
  void skipString();
  void skipBracket();
  void skipInlineImage();
  void readName();
  std::string_view readWord();
  void addNumber(std::string_view word);

  std::string_view content_;
  std::size_t position_ = 0;
  std::array<double, 6> numbers_{};  // the last ones
  std::size_t numberCount_ = 0;
  std::string_view name_;
  long openBrackets_ = 0;
  bool endsInside_ = false;
};

// How a content stream leaves the stack of graphics states.
struct PDFContentBalance {
  long unmatchedRestores = 0;  // Q without a q before it
  long unmatchedSaves = 0;     // q without a Q behind it
  bool endsInside = false;     // as PDFContentScanner has it
};
PDFContentBalance balanceOf(std::string_view content);

}  // namespace quirn::platform
