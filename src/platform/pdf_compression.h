// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Making a document small for the screen: pictures as JPEG of as many pixels as a screen shows, everything else packed
// without loss. Text, structure and looks stay.

#pragma once

#include <stop_token>

#include "platform/pdf_document.h"

namespace quirn::platform {

// The most pixels that are kept for an inch of a page.
inline constexpr double screenPixelsPerInch = 150;

// Changes the document; writeCompressed() then writes it. Pictures that would grow are left as they are, and so are
// masks of one bit, colours that JPEG has no place for, and codings that can't be undone here (JBIG2, fax).
// Uses all processors. Ends early when a stop is requested. Throws PDFError.
void compressForScreen(PDFDocument& document, const std::stop_token& stop);

// With its objects in compressed streams. Throws PDFError.
void writeCompressed(const PDFDocument& document, int descriptor);

}  // namespace quirn::platform
