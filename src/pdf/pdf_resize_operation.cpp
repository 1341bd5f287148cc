// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_resize_operation.h"

#include <fmt/format.h>

#include "pdf/pdf_pages.h"
#include "platform/pdf_canvas.h"
#include "platform/pdf_flatten.h"

namespace quirn {
namespace {

using platform::PDFDocument;
using platform::PDFRectangle;

PDFRectangle sheetOf(const PDFResizeConfig& config, const platform::PDFPageView& first) {
  using enum PDFResizeConfig::Orientation;
  const PaperExtent paper = extentOf(config.paper);
  const bool isLandscape =
      config.orientation == auto_ ? first.shownHeight() < first.shownWidth() : config.orientation == landscape;
  return isLandscape ? PDFRectangle::ofSize(paper.height, paper.width)
                     : PDFRectangle::ofSize(paper.width, paper.height);
}

void resize(PDFDocument& document, const PDFResizeConfig& config, OperationContext& context) {
  const PDFRectangle sheet = sheetOf(config, viewOf(document, 0));
  platform::PDFCanvas canvas(document);
  for (std::size_t page = 0; page < document.pageCount(); ++page) {
    context.checkCancellation();
    canvas.beginPage({.mediaBox = sheet});
    canvas.drawPageInto(page, sheet);
    canvas.endPage();
  }
  canvas.close();
}

}  // namespace

OutputFile PDFResizeOperation::processFileConfigured(const InputFile& input, const PDFResizeConfig& config,
                                                     OperationContext& context) const {
  PDFDocument document = openPagesOfPDF(input, context);
  guardedRead(input, [&] {
    platform::flattenAnnotations(document, context.stopToken());
    resize(document, config, context);
  });
  OutputFile output = writePDF(document, input, "resized", context);
  context.setStatus(fmt::format("Resized {} to {}", input.fileName(), label(config.paper)));
  return output;
}

}  // namespace quirn
