// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/accepted_pdfs.h"
#include "pdf/pdf_merge_operation.h"

namespace quirn {

const OperationInfo& PDFMergeOperation::info() {
  static const OperationInfo info{
      .operationID = "pdf.merge",
      .displayName = "Merge PDFs",
      .iconName = "rectangle.stack",
      .category = OperationCategory::pdf,
      .aliases = {"combine pdf", "join pdf", "concatenate"},
      .about = "Puts the pages of several PDFs into one, in the order of the files.",
  };
  return info;
}

const AcceptedInputs& PDFMergeOperation::accepts() {
  return twoOrMorePDFs();
}

}  // namespace quirn
