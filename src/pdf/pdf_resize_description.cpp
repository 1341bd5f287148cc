// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/accepted_pdfs.h"
#include "pdf/pdf_resize_operation.h"

namespace quirn {

Panel PDFResizeConfig::panel() {
  using enum Orientation;
  std::vector<std::pair<PaperSize, std::string>> papers;
  for (const PaperSize paper : {PaperSize::a4, PaperSize::letter, PaperSize::legal, PaperSize::a3, PaperSize::a5})
    papers.emplace_back(paper, label(paper));
  return {choice<&PDFResizeConfig::paper>("Paper", std::move(papers)),
          choice<&PDFResizeConfig::orientation>("Orientation",
                                                {{auto_, "Auto"}, {portrait, "Portrait"}, {landscape, "Landscape"}})};
}

const OperationInfo& PDFResizeOperation::info() {
  static const OperationInfo info{
      .operationID = "pdf.resize-paper",
      .displayName = "Resize PDF (Paper)",
      .iconName = "rectangle.portrait",
      .category = OperationCategory::pdf,
      .aliases = {"resize pdf", "paper size", "a4", "letter", "scale pages", "fit to page"},
      .about = "Puts every page on paper of the same size.",
  };
  return info;
}

const AcceptedInputs& PDFResizeOperation::accepts() {
  return anyPDFs();
}

}  // namespace quirn
