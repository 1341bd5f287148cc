// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/accepted_pdfs.h"
#include "pdf/pdf_crop_operation.h"

namespace quirn {

Panel PDFCropConfig::panel() {
  const NumberBounds bounds{.legal = {0, 100}, .suggested = Range{0, 50}, .unit = "%"};
  return {Note{"Margins trimmed, as a percent of each edge."}, slider<&PDFCropConfig::top>("Top", bounds),
          slider<&PDFCropConfig::right>("Right", bounds), slider<&PDFCropConfig::bottom>("Bottom", bounds),
          slider<&PDFCropConfig::left>("Left", bounds)};
}

const OperationInfo& PDFCropOperation::info() {
  static const OperationInfo info{
      .operationID = "pdf.crop",
      .displayName = "Crop PDF",
      .iconName = "crop",
      .category = OperationCategory::pdf,
      .aliases = {"crop pdf", "trim margins", "trim pdf", "cut margins"},
      .about = "Trims the margins of every page.",
  };
  return info;
}

const AcceptedInputs& PDFCropOperation::accepts() {
  return anyPDFs();
}

}  // namespace quirn
