// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Lines of text that become content of a document's pages: page numbers, watermarks.

#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include "platform/pdf_document.h"
#include "platform/pdf_geometry.h"
#include "platform/pdf_text.h"

namespace quirn::platform {

class PDFStamper {
 public:
  // The document outlives the stamper.
  explicit PDFStamper(PDFDocument& document);
  ~PDFStamper();
  PDFStamper(const PDFStamper&) = delete;
  PDFStamper& operator=(const PDFStamper&) = delete;

  // The media box as a reader sees it: with the width and height of the turned page.
  PDFRectangle shownBox(std::size_t page) const;

  // Sets one line into `rectangle`, which is in the plane of shownBox(): upright, in the middle of its height, at the
  // side that the text's alignment names. A line that is wider is shrunk to fit. Throws PDFError or std::runtime_error.
  void stamp(std::size_t page, const PDFText& line, const PDFRectangle& rectangle);

  // Draws all of it on the pages; the last call. Throws as stamp() does.
  void finish();

 private:
  struct State;
  std::unique_ptr<State> state_;
};

}  // namespace quirn::platform
