// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_watermark_operation.h"

#include <fmt/format.h>

#include <string>

#include "pdf/pdf_pages.h"
#include "platform/pdf_stamp.h"
#include "platform/text.h"

namespace quirn {
namespace {

using platform::PDFRectangle;
using platform::PDFText;

constexpr platform::PDFColor systemGray{0x8E / 255.0, 0x8E / 255.0, 0x93 / 255.0};

std::string stampedText(const PDFWatermarkConfig& config) {
  std::string text(platform::trimmed(config.text));
  if (text.empty()) throw OperationError::unsupportedInput("Enter watermark text.");
  return text;
}

void stampPages(platform::PDFDocument& document, const PDFWatermarkConfig& config, OperationContext& context) {
  const PDFText text{.text = stampedText(config),
                     .size = config.fontSize,
                     .weight = PDFText::Weight::bold,
                     .color = systemGray,
                     .opacity = config.opacity,
                     .alignment = PDFText::Alignment::center};
  platform::PDFStamper stamper(document);
  for (std::size_t page = 0; page < document.pageCount(); ++page) {
    context.checkCancellation();
    stamper.stamp(page, text, watermarkBand(stamper.shownBox(page), config));
  }
  stamper.finish();
}

}  // namespace

PDFRectangle watermarkBand(const PDFRectangle& mediaBox, const PDFWatermarkConfig& config) {
  using Position = PDFWatermarkConfig::Position;
  constexpr double margin = 28;
  const double height = config.fontSize * 1.6;
  double bottom = mediaBox.midY() - height / 2;
  if (config.position == Position::top) bottom = mediaBox.top - height - margin;
  if (config.position == Position::bottom) bottom = mediaBox.bottom + margin;
  return {mediaBox.left, bottom, mediaBox.right, bottom + height};
}

OutputFile PDFWatermarkOperation::processFileConfigured(const InputFile& input, const PDFWatermarkConfig& config,
                                                        OperationContext& context) const {
  stampedText(config);
  platform::PDFDocument document = openUnlockedPDF(input, context);
  guardedRead(input, [&] { stampPages(document, config, context); });
  OutputFile output = writePDF(document, input, "watermarked", context);
  context.setStatus(fmt::format("Watermarked {}", input.fileName()));
  return output;
}

}  // namespace quirn
