// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Text for PDF pages, laid out with the fonts of this machine: any script, either direction, glyphs from whichever
// fonts have them. The fonts are embedded as subsets, and what is drawn can be searched and copied.

#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <string>

namespace quirn::platform {

struct PDFColor {
  double red = 0;  // from 0 to 1, as the others
  double green = 0;
  double blue = 0;
  bool operator==(const PDFColor&) const = default;
};

struct PDFText {
  enum class Weight { regular, bold };
  enum class Alignment { left, center, right };

  std::string text;                   // UTF-8; what isn't is replaced
  double size = 12;                   // of the font, in points
  std::string family = "sans-serif";  // a family, or a generic name of the desktop's choice
  Weight weight = Weight::regular;
  PDFColor color;
  double opacity = 1;                     // from 0 to 1
  Alignment alignment = Alignment::left;  // of the lines among themselves
  std::optional<double> wrapWidth;        // in points; without it, all is one line

  bool operator==(const PDFText&) const = default;
};

struct PDFTextExtent {
  double width = 0;  // in points, as the next: of the lines' boxes, not of the ink
  double height = 0;
};

// Gathers texts as pages of one small PDF, which they share their fonts in.
class PDFTypesetter {
 public:
  // Room around each text for ink beyond its box, in font sizes.
  static constexpr double margin = 1;
  // What is longer is cut.
  static constexpr std::size_t mostBytes = 100'000;

  PDFTypesetter();
  ~PDFTypesetter();
  PDFTypesetter(const PDFTypesetter&) = delete;
  PDFTypesetter& operator=(const PDFTypesetter&) = delete;

  PDFTextExtent measure(const PDFText& text) const;

  // Sets the text on a page of its own, with margin() x size around its box. Returns its extent; with `wrapWidth`,
  // that is its width. Throws std::runtime_error.
  PDFTextExtent add(const PDFText& text);

  // The PDF of all texts in the order in which they were added; the last call. Throws std::runtime_error.
  std::string finish();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quirn::platform
