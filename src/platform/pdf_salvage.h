// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Documents that have lost their way to their pages: the table of objects, the catalog, the tree of pages.

#pragma once

#include <string>

#include "platform/pdf_document.h"

namespace quirn::platform {

// A document of whatever page objects stand in these bytes, in the order in which they do, found by their looks. They
// keep what they inherit where that is still there. Throws PDFError for an encrypted one, which can't be read so, and
// for bytes without pages.
PDFDocument salvagedPDF(std::string bytes);

}  // namespace quirn::platform
