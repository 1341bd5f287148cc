// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_nup_operation.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>
#include <vector>

#include "pdf/imposition.h"
#include "pdf/pdf_pages.h"
#include "platform/pdf_canvas.h"

namespace quirn {
namespace {

using platform::PDFCanvas;
using platform::PDFDocument;
using platform::PDFRectangle;

SheetLayout layoutOf(PDFNUpConfig::Mode mode, double width, double height) {
  using enum PDFNUpConfig::Mode;
  const double longSide = std::max(width, height);
  const double shortSide = std::min(width, height);
  switch (mode) {
    case twoUp:
    case booklet: return {2, 1, longSide, shortSide};
    case fourUp: return {2, 2, shortSide, longSide};
    case sixUp: return {2, 3, shortSide, longSide};
    case nineUp: return {3, 3, shortSide, longSide};
  }
  throw std::logic_error("mode");
}

void impose(PDFDocument& document, PDFNUpConfig::Mode mode, OperationContext& context) {
  const platform::PDFPageView first = viewOf(document, 0);
  const SheetLayout layout = layoutOf(mode, first.box.width(), first.box.height());
  const std::vector<Slot> slots =
      mode == PDFNUpConfig::Mode::booklet ? bookletSlots(document.pageCount()) : pagesInOrder(document.pageCount());
  PDFCanvas canvas(document);
  for (std::size_t begin = 0; begin < slots.size(); begin += layout.cellCount()) {
    context.checkCancellation();
    canvas.beginPage({.mediaBox = PDFRectangle::ofSize(layout.width, layout.height), .userUnit = first.userUnit});
    for (std::size_t cell = 0; cell < std::min(layout.cellCount(), slots.size() - begin); ++cell) {
      if (const Slot page = slots[begin + cell]) canvas.drawPageInto(*page, layout.cell(cell));
    }
    canvas.endPage();
  }
  canvas.close();
}

}  // namespace

OutputFile PDFNUpOperation::processFileConfigured(const InputFile& input, const PDFNUpConfig& config,
                                                  OperationContext& context) const {
  PDFDocument document = openPagesOfPDF(input, context);
  guardedRead(input, [&] { impose(document, config.mode, context); });
  OutputFile output = writePDF(document, input, "nup", context);
  context.setStatus(fmt::format("Imposed {}", input.fileName()));
  return output;
}

}  // namespace quirn
