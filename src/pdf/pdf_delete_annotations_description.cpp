// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/accepted_pdfs.h"
#include "pdf/pdf_delete_annotations_operation.h"

namespace quirn {

const OperationInfo& PDFDeleteAnnotationsOperation::info() {
  static const OperationInfo info{
      .operationID = "pdf.delete-annotations",
      .displayName = "Remove PDF Annotations",
      .iconName = "eraser",
      .category = OperationCategory::pdf,
      .aliases = {"remove annotations", "delete markup", "clear comments", "strip annotations"},
      .about = "Takes notes, markup, links and form fields off the pages.",
  };
  return info;
}

const AcceptedInputs& PDFDeleteAnnotationsOperation::accepts() {
  return anyPDFs();
}

}  // namespace quirn
