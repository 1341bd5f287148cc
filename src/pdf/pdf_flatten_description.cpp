// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/accepted_pdfs.h"
#include "pdf/pdf_flatten_operation.h"

namespace quirn {

const OperationInfo& PDFFlattenOperation::info() {
  static const OperationInfo info{
      .operationID = "pdf.flatten",
      .displayName = "Flatten PDF",
      .iconName = "square.stack.3d.down.right",
      .category = OperationCategory::pdf,
      .aliases = {"flatten", "flatten forms", "bake annotations", "merge layers"},
      .about = "Makes annotations and form fields part of the pages.",
  };
  return info;
}

const AcceptedInputs& PDFFlattenOperation::accepts() {
  return anyPDFs();
}

}  // namespace quirn
