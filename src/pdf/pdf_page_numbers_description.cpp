// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/accepted_pdfs.h"
#include "pdf/pdf_page_numbers_operation.h"

namespace quirn {

Panel PDFPageNumbersConfig::panel() {
  using enum Format;
  using enum Position;
  return {choice<&PDFPageNumbersConfig::format>("Format",
                                                {{plain, "1"}, {page, "Page 1"}, {ofTotal, "1 / N"}, {bates, "Bates"}}),
          choice<&PDFPageNumbersConfig::position>("Position", {{bottomCenter, "Bottom center"},
                                                               {bottomRight, "Bottom right"},
                                                               {bottomLeft, "Bottom left"},
                                                               {topRight, "Top right"}}),
          stepper<&PDFPageNumbersConfig::start>("Start at", {.legal = {0, 99'999'999}, .suggested = Range{1, 9999}}),
          field<&PDFPageNumbersConfig::batesPrefix>("Prefix").shownWhen<PDFPageNumbersConfig>(
              [](const PDFPageNumbersConfig& config) { return config.format == bates; })};
}

const OperationInfo& PDFPageNumbersOperation::info() {
  static const OperationInfo info{
      .operationID = "pdf.page-numbers",
      .displayName = "Add Page Numbers",
      .iconName = "number",
      .category = OperationCategory::pdf,
      .aliases = {"page numbers", "bates", "numbering", "header footer"},
      .about = "Writes a number on every page.",
  };
  return info;
}

const AcceptedInputs& PDFPageNumbersOperation::accepts() {
  return anyPDFs();
}

}  // namespace quirn
