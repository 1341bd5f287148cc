// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/accepted_pdfs.h"
#include "pdf/pdf_split_operation.h"

namespace quirn {

Panel PDFSplitConfig::panel() {
  using enum Mode;
  return {countFact<&PDFSplitConfig::pageCount>("page", "pages"),
          choice<&PDFSplitConfig::mode>("Split mode", {{everyN, "Every N pages"}, {ranges, "Ranges"}}),
          stepper<&PDFSplitConfig::pagesPerChunk>("Pages per file", {.legal = {0, 100'000}, .suggested = Range{1, 100}})
              .shownWhen<PDFSplitConfig>([](const PDFSplitConfig& config) { return config.mode == everyN; }),
          field<&PDFSplitConfig::rangeText>("Ranges", "e.g. 1-3, 5, 8-10")
              .shownWhen<PDFSplitConfig>([](const PDFSplitConfig& config) { return config.mode == ranges; })};
}

const OperationInfo& PDFSplitOperation::info() {
  static const OperationInfo info{
      .operationID = "pdf.split",
      .displayName = "Split PDF",
      .iconName = "rectangle.split.2x1",
      .category = OperationCategory::pdf,
      .aliases = {"split pdf", "extract pages", "separate pdf"},
      .about = "Writes the pages of a PDF into several, every few pages or by ranges.",
  };
  return info;
}

const AcceptedInputs& PDFSplitOperation::accepts() {
  return onePDF();
}

}  // namespace quirn
