// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_delete_annotations_operation.h"

#include <fmt/format.h>

#include "pdf/pdf_files.h"

namespace quirn {

OutputFile PDFDeleteAnnotationsOperation::processFile(const InputFile& input, OperationContext& context) const {
  platform::PDFDocument document = openUnlockedPDF(input, context);
  guardedRead(input, [&] { document.removeAnnotations(); });
  OutputFile output = writePDF(document, input, "clean", context);
  context.setStatus(fmt::format("Cleaned {}", input.fileName()));
  return output;
}

}  // namespace quirn
