// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_repair_operation.h"

#include <fmt/format.h>

#include "pdf/pdf_pages.h"
#include "platform/pdf_canvas.h"

namespace quirn {
namespace {

// With the old page's boxes, turn and unit, so that it looks as it did.
void redraw(platform::PDFDocument& document, OperationContext& context) {
  platform::PDFCanvas canvas(document);
  for (std::size_t page = 0; page < document.pageCount(); ++page) {
    context.checkCancellation();
    const platform::PDFRectangle mediaBox = document.box(page, platform::PDFBox::media);
    const platform::PDFPageView view = viewOf(document, page);
    canvas.beginPage({mediaBox, view.box, view.rotation, view.userUnit});
    canvas.drawPage(page, mediaBox, {});
    canvas.endPage();
  }
  canvas.close();
}

}  // namespace

OutputFile PDFRepairOperation::processFile(const InputFile& input, OperationContext& context) const {
  platform::PDFDocument document = openDamagedPDF(input, context);
  guardedRead(input, [&] { redraw(document, context); });
  OutputFile output = writePDF(document, input, "repaired", context);
  context.setStatus(fmt::format("Repaired {}", input.fileName()));
  return output;
}

}  // namespace quirn
