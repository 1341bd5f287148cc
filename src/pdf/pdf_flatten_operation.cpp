// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_flatten_operation.h"

#include <fmt/format.h>

#include "pdf/pdf_pages.h"
#include "platform/pdf_flatten.h"

namespace quirn {

OutputFile PDFFlattenOperation::processFile(const InputFile& input, OperationContext& context) const {
  platform::PDFDocument document = openUnlockedPDF(input, context);
  guardedRead(input, [&] { platform::flattenAnnotations(document, context.stopToken()); });
  context.checkCancellation();
  OutputFile output = writePDF(document, input, "flattened", context);
  context.setStatus(fmt::format("Flattened {}", input.fileName()));
  return output;
}

}  // namespace quirn
