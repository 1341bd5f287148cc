// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Draws the pages of a document anew, each as often and wherever one wants, on pages that take the place of the old
// ones. A page is drawn as a form (ISO 32000-1, 8.10): its vectors stay vectors, its text stays text, and its streams
// keep their bytes. What a page has beside its content (annotations, links, fields) and what the document has beside
// its pages stay behind, but for the layers that tell which content is shown.

#pragma once

#include <cstddef>
#include <memory>

#include "platform/pdf_document.h"
#include "platform/pdf_geometry.h"

namespace quirn::platform {

// How a reader shows the page: its crop box. A unit that is no positive number is a point.
PDFPageView viewOf(const PDFDocument& document, std::size_t page);

// A new page: what is visible, how it is turned and its unit in points.
struct PDFSheet {
  PDFRectangle mediaBox;
  PDFRectangle cropBox = mediaBox;
  int rotation = 0;
  double userUnit = 1;
};

class PDFCanvas {
 public:
  // The document outlives the canvas, and isn't used otherwise until close().
  explicit PDFCanvas(PDFDocument& document);
  ~PDFCanvas();
  PDFCanvas(const PDFCanvas&) = delete;
  PDFCanvas& operator=(const PDFCanvas&) = delete;

  void beginPage(const PDFSheet& sheet);

  // What is drawn of a page: everything within its `box`, which is in its own plane. Throws PDFError, as all do.
  void drawPage(std::size_t page, const PDFRectangle& box, const PDFMatrix& transform);
  // Draws the visible part of a page in the middle of `target`: shrunk to fit, never enlarged, cut at its edges. The
  // page's turn and unit are honoured, the unit as a multiple of the sheet's.
  void drawPageInto(std::size_t page, const PDFRectangle& target);

  void endPage();

  // The drawn pages become those of the document.
  void close();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quirn::platform
