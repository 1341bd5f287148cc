// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_internal.h"
#include "platform/pdf_page_content.h"

namespace quirn::platform {

void PDFDocument::setCropBox(std::size_t page, const PDFRectangle& box) {
  internals_->guarded(PDFError::Kind::unreadable,
                      [&] { internals_->pages.at(page).replaceKey("/CropBox", arrayOf(box)); });
}

}  // namespace quirn::platform
