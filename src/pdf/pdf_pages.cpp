// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_pages.h"

namespace quirn {

using platform::PDFDocument;
using platform::PDFError;

PDFDocument openPagesOfPDF(const InputFile& input, OperationContext& context) {
  PDFDocument document = openUnlockedPDF(input, context);
  if (document.pageCount() == 0) throw OperationError::readFailed(input.url, "Not a readable PDF");
  return document;
}

PDFDocument openDamagedPDF(const InputFile& input, OperationContext& context) {
  PDFDocument document = openUnlockedPDF(input, context);
  if (document.pageCount() == 0) throw OperationError::readFailed(input.url, "Couldn't open the PDF, even leniently.");
  return document;
}

void changePDF(const InputFile& input, const std::function<void()>& change) {
  try {
    change();
  } catch (const PDFError& error) {
    throw readError(error, input);
  }
}

}  // namespace quirn
