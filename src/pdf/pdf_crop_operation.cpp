// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_crop_operation.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "pdf/pdf_pages.h"

namespace quirn {
namespace {

using platform::PDFRectangle;

void checkMargins(const PDFCropConfig& config) {
  if (config.top + config.bottom >= 100 || config.left + config.right >= 100)
    throw OperationError::unsupportedInput("Those margins would crop the whole page.");
}

// The margins along the edges of the page itself, of those along the edges that a reader sees.
PDFCropConfig turned(PDFCropConfig config, int rotation) {
  std::array margins{config.top, config.right, config.bottom, config.left};
  std::ranges::rotate(margins, margins.begin() + rotation / 90);
  config.top = margins[0];
  config.right = margins[1];
  config.bottom = margins[2];
  config.left = margins[3];
  return config;
}

}  // namespace

PDFRectangle cropped(const PDFRectangle& box, const PDFCropConfig& config) {
  const double left = box.left + box.width() * config.left / 100;
  const double bottom = box.bottom + box.height() * config.bottom / 100;
  return {left, bottom, left + box.width() * (1 - (config.left + config.right) / 100),
          bottom + box.height() * (1 - (config.top + config.bottom) / 100)};
}

OutputFile PDFCropOperation::processFileConfigured(const InputFile& input, const PDFCropConfig& config,
                                                   OperationContext& context) const {
  checkMargins(config);
  platform::PDFDocument document = openUnlockedPDF(input, context);
  guardedRead(input, [&] {
    for (std::size_t page = 0; page < document.pageCount(); ++page) {
      context.checkCancellation();
      document.setCropBox(page,
                          cropped(document.box(page, platform::PDFBox::crop), turned(config, document.rotation(page))));
    }
  });
  OutputFile output = writePDF(document, input, "cropped", context);
  context.setStatus(fmt::format("Cropped {}", input.fileName()));
  return output;
}

}  // namespace quirn
