// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/accepted_pdfs.h"
#include "pdf/pdf_nup_operation.h"

namespace quirn {

Panel PDFNUpConfig::panel() {
  using enum Mode;
  return {choice<&PDFNUpConfig::mode>(
              "Layout", {{twoUp, "2-up"}, {fourUp, "4-up"}, {sixUp, "6-up"}, {nineUp, "9-up"}, {booklet, "Booklet"}}),
          Note{"Pages reordered for double-sided printing + folding."}.shownWhen<PDFNUpConfig>(
              [](const PDFNUpConfig& config) { return config.mode == booklet; })};
}

const OperationInfo& PDFNUpOperation::info() {
  static const OperationInfo info{
      .operationID = "pdf.nup",
      .displayName = "N-up / Booklet",
      .iconName = "rectangle.split.2x2",
      .category = OperationCategory::pdf,
      .aliases = {"n-up", "nup", "booklet", "imposition", "pages per sheet", "2 up", "4 up"},
      .about = "Puts several pages on each sheet, or a booklet in the order for folding.",
  };
  return info;
}

const AcceptedInputs& PDFNUpOperation::accepts() {
  return anyPDFs();
}

}  // namespace quirn
