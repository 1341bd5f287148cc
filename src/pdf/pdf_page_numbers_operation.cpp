// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_page_numbers_operation.h"

#include <fmt/format.h>

#include <cstdint>
#include <stdexcept>
#include <string>

#include "pdf/pdf_pages.h"
#include "platform/pdf_stamp.h"

namespace quirn {
namespace {

using platform::PDFRectangle;
using platform::PDFText;

std::string numberText(const PDFPageNumbersConfig& config, std::int64_t number, std::int64_t total) {
  using enum PDFPageNumbersConfig::Format;
  switch (config.format) {
    case plain: return fmt::format("{}", number);
    case page: return fmt::format("Page {}", number);
    case ofTotal: return fmt::format("{} / {}", number, total);
    case bates: return fmt::format("{}{:06}", config.batesPrefix, number);
  }
  throw std::logic_error("format");
}

PDFText::Alignment alignmentOf(PDFPageNumbersConfig::Position position) {
  using enum PDFPageNumbersConfig::Position;
  switch (position) {
    case bottomCenter: return PDFText::Alignment::center;
    case bottomLeft: return PDFText::Alignment::left;
    case bottomRight:
    case topRight: return PDFText::Alignment::right;
  }
  throw std::logic_error("position");
}

void number(platform::PDFDocument& document, const PDFPageNumbersConfig& config, OperationContext& context) {
  const auto count = static_cast<std::int64_t>(document.pageCount());
  const std::int64_t total = count + config.start - 1;
  platform::PDFStamper stamper(document);
  for (std::int64_t i = 0; i < count; ++i) {
    context.checkCancellation();
    const auto page = static_cast<std::size_t>(i);
    const PDFText text{
        .text = numberText(config, config.start + i, total), .size = 11, .alignment = alignmentOf(config.position)};
    stamper.stamp(page, text, pageNumberRectangle(stamper.shownBox(page), config.position));
  }
  stamper.finish();
}

}  // namespace

PDFRectangle pageNumberRectangle(const PDFRectangle& mediaBox, PDFPageNumbersConfig::Position position) {
  using enum PDFPageNumbersConfig::Position;
  constexpr double width = 260;
  constexpr double height = 16;
  constexpr double margin = 28;
  double left = mediaBox.midX() - width / 2;
  if (position == bottomLeft) left = mediaBox.left + margin;
  if (position == bottomRight || position == topRight) left = mediaBox.right - margin - width;
  const double bottom = position == topRight ? mediaBox.top - margin - height : mediaBox.bottom + margin;
  return {left, bottom, left + width, bottom + height};
}

OutputFile PDFPageNumbersOperation::processFileConfigured(const InputFile& input, const PDFPageNumbersConfig& config,
                                                          OperationContext& context) const {
  platform::PDFDocument document = openUnlockedPDF(input, context);
  guardedRead(input, [&] { number(document, config, context); });
  OutputFile output = writePDF(document, input, "numbered", context);
  context.setStatus(fmt::format("Numbered {}", input.fileName()));
  return output;
}

}  // namespace quirn
