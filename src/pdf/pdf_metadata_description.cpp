// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/accepted_pdfs.h"
#include "pdf/pdf_metadata_operation.h"

namespace quirn {

Panel PDFMetadataConfig::panel() {
  return {field<&PDFMetadataConfig::title>("Title").fromInput(),
          field<&PDFMetadataConfig::author>("Author").fromInput(),
          field<&PDFMetadataConfig::subject>("Subject").fromInput(),
          field<&PDFMetadataConfig::keywords>("Keywords", "comma, separated").fromInput()};
}

const OperationInfo& PDFMetadataOperation::info() {
  static const OperationInfo info{
      .operationID = "pdf.metadata",
      .displayName = "Edit PDF Metadata",
      .iconName = "info.circle",
      .category = OperationCategory::pdf,
      .aliases = {"pdf metadata", "title author", "document properties", "pdf info"},
      .about = "Changes a PDF’s title, author, subject and keywords.",
  };
  return info;
}

const AcceptedInputs& PDFMetadataOperation::accepts() {
  return onePDF();
}

}  // namespace quirn
