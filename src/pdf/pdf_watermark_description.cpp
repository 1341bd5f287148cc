// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/accepted_pdfs.h"
#include "pdf/pdf_watermark_operation.h"

namespace quirn {

Panel PDFWatermarkConfig::panel() {
  using enum Position;
  return {field<&PDFWatermarkConfig::text>("Text"),
          slider<&PDFWatermarkConfig::fontSize>("Size", {.legal = {18, 120}, .unit = "pt"}),
          slider<&PDFWatermarkConfig::opacity>("Opacity", {.legal = {0.05, 1}}),
          choice<&PDFWatermarkConfig::position>("Position", {{center, "Center"}, {top, "Top"}, {bottom, "Bottom"}})};
}

const OperationInfo& PDFWatermarkOperation::info() {
  static const OperationInfo info{
      .operationID = "pdf.watermark",
      .displayName = "Watermark PDF",
      .iconName = "seal",
      .category = OperationCategory::pdf,
      .aliases = {"watermark", "stamp pdf", "draft", "confidential"},
      .about = "Writes a line of gray text across every page.",
  };
  return info;
}

const AcceptedInputs& PDFWatermarkOperation::accepts() {
  return anyPDFs();
}

}  // namespace quirn
