// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the operations that redraw or mark pages have in common, on top of pdf_files.h.

#pragma once

#include "pdf/pdf_files.h"

namespace quirn {

// Like openUnlockedPDF(). Throws readFailed "Not a readable PDF" also for a document without pages.
platform::PDFDocument openPagesOfPDF(const InputFile& input, OperationContext& context);

// Opens what is too damaged for that, if there are pages in it. Throws readFailed
// "Couldn't open the PDF, even leniently."
platform::PDFDocument openDamagedPDF(const InputFile& input, OperationContext& context);

}  // namespace quirn
