// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// How annotations and fields want their text (ISO 32000-1, 12.7.3.3), for the sources of platform/ alone.

#pragma once

#include <string>

#include "platform/pdf_drawing.h"
#include "platform/pdf_text.h"
#include "platform/pdf_text_forms.h"

namespace quirn::platform {

// The text, with the font, size (0 for one that fits) and colour of a default appearance string. `fonts` are those that
// the string names.
PDFText styledText(std::string text, const std::string& defaultAppearance, QPDFObjectHandle fonts);

// The quadding of an annotation or field: 0, 1 or 2.
PDFText::Alignment alignmentOf(QPDFObjectHandle quadding);

enum class PDFTextFlow { line, paragraphs };

// Draws the text into the rectangle, cut at its edges: one line in the middle of its height, paragraphs from its top.
// A size of 0 becomes one at which it fits.
void drawText(PDFDrawing& drawing, PDFTextForms& forms, PDFText text, const PDFRectangle& rectangle, PDFTextFlow flow);

}  // namespace quirn::platform
