// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/accepted_pdfs.h"
#include "pdf/pdf_repair_operation.h"

namespace quirn {

const OperationInfo& PDFRepairOperation::info() {
  static const OperationInfo info{
      .operationID = "pdf.repair",
      .displayName = "Repair PDF",
      .iconName = "bandage",
      .category = OperationCategory::pdf,
      .aliases = {"repair pdf", "fix pdf", "rebuild pdf", "recover pdf"},
      .about = "Draws every page of a damaged file into a new one.",
  };
  return info;
}

const AcceptedInputs& PDFRepairOperation::accepts() {
  return anyPDFs();
}

}  // namespace quirn
