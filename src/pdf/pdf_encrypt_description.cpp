// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/accepted_pdfs.h"
#include "pdf/pdf_encrypt_operation.h"

namespace quirn {

const OperationInfo& PDFEncryptOperation::info() {
  static const OperationInfo info{
      .operationID = "pdf.encrypt",
      .displayName = "Protect PDF",
      .iconName = "lock",
      .category = OperationCategory::pdf,
      .aliases = {"password protect", "encrypt pdf", "lock pdf", "add password"},
      .about = "Encrypts PDFs so that they open only with a password.",
  };
  return info;
}

const AcceptedInputs& PDFEncryptOperation::accepts() {
  return anyPDFs();
}

Panel PDFEncryptOperation::panel() {
  return {newSecret<&PDFPasswordConfig::password>("New password")};
}

}  // namespace quirn
