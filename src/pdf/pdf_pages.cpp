// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_pages.h"

#include <cstdint>

#include "platform/pdf_salvage.h"

namespace quirn {

using platform::PDFDocument;
using platform::PDFError;

PDFDocument openPagesOfPDF(const InputFile& input, OperationContext& context) {
  PDFDocument document = openUnlockedPDF(input, context);
  if (document.pageCount() == 0) throw OperationError::readFailed(input.url, "Not a readable PDF");
  return document;
}

namespace {

constexpr std::int64_t mostSalvaged = std::int64_t{512} << 20;  // bytes

PDFDocument openSalvaged(const InputFile& input, OperationContext& context) {
  try {
    PDFDocument document = platform::salvagedPDF(context.open(input).readAll(mostSalvaged));
    if (document.pageCount() > 0) return document;
  } catch (const PDFError&) {
    // Said below, in the words for every file without pages.
  }
  throw OperationError::readFailed(input.url, "Couldn't open the PDF, even leniently.");
}

}  // namespace

PDFDocument openDamagedPDF(const InputFile& input, OperationContext& context) {
  try {
    PDFDocument document = openUnlockedPDF(input, context);
    if (document.pageCount() > 0) return document;
  } catch (const OperationError& error) {
    // A disk that fails will fail again.
    if (error.kind() != OperationError::Kind::readFailed) throw;
  }
  return openSalvaged(input, context);
}

}  // namespace quirn
