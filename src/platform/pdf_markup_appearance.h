// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Appearances of annotations that are no form fields, from what their dictionaries say (ISO 32000-1, 12.5.6), for the
// sources of platform/ alone.

#pragma once

#include "platform/pdf_drawing.h"
#include "platform/pdf_text_forms.h"

namespace quirn::platform {

// Draws the annotation in the page's plane; nothing for one of a kind that shows nothing by itself. Returns the box of
// what it drew, which may be larger than the annotation's `rectangle`.
PDFRectangle drawMarkup(PDFDrawing& drawing, PDFTextForms& texts, QPDFObjectHandle annotation,
                        const PDFRectangle& rectangle);

}  // namespace quirn::platform
