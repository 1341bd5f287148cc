// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/accepted_pdfs.h"
#include "pdf/pdf_compress_operation.h"

namespace quirn {

const OperationInfo& PDFCompressOperation::info() {
  static const OperationInfo info{
      .operationID = "pdf.compress",
      .displayName = "Compress PDF",
      .iconName = "rectangle.compress.vertical",
      .category = OperationCategory::pdf,
      .aliases = {"compress pdf", "optimize pdf", "shrink pdf", "reduce size"},
      .about = "Makes pictures as large as a screen shows them, and packs all else tightly.",
  };
  return info;
}

const AcceptedInputs& PDFCompressOperation::accepts() {
  return anyPDFs();
}

}  // namespace quirn
