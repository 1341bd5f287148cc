// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/accepted_pdfs.h"
#include "pdf/pdf_unlock_operation.h"

namespace quirn {

const OperationInfo& PDFUnlockOperation::info() {
  static const OperationInfo info{
      .operationID = "pdf.unlock",
      .displayName = "Remove PDF Password",
      .iconName = "lock.open",
      .category = OperationCategory::pdf,
      .aliases = {"unlock pdf", "remove password", "decrypt pdf"},
      .about = "Writes the pages of protected PDFs into ones without a password.",
  };
  return info;
}

const AcceptedInputs& PDFUnlockOperation::accepts() {
  return anyPDFs();
}

Panel PDFUnlockOperation::panel() {
  return {secret<&PDFPasswordConfig::password>("Current password")};
}

}  // namespace quirn
