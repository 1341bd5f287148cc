// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Appearances of form fields from their values, for the sources of platform/ alone.

#pragma once

#include "platform/pdf_drawing.h"
#include "platform/pdf_field.h"
#include "platform/pdf_text_forms.h"

namespace quirn::platform {

// Draws the widget's field into `box`, upright.
void drawField(PDFDrawing& drawing, PDFTextForms& texts, QPDFObjectHandle widget, const PDFField& field,
               const PDFRectangle& box);

}  // namespace quirn::platform
