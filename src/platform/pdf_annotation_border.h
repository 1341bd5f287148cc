// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The borders of annotations and fields (ISO 32000-1, 12.5.4), for the sources of platform/ alone.

#pragma once

#include "platform/pdf_drawing.h"

namespace quirn::platform {

// The pen of an annotation's border or line, in the given ink: of the width and dashes that /BS or /Border say, one
// point wide where neither does.
PDFPen penOf(QPDFObjectHandle annotation, PDFInk ink);

// Whether the annotation says anything about its border.
bool statesBorder(QPDFObjectHandle annotation);

// The border within the annotation's box: all around, or along its lower edge where the style says so, and with edges
// in light and shade where it is raised or sunken. Returns what is within it.
PDFRectangle drawBorder(PDFDrawing& drawing, QPDFObjectHandle annotation, const PDFRectangle& box, const PDFInk& fill,
                        const PDFPen& pen);

PDFRectangle inset(const PDFRectangle& rectangle, double by);

}  // namespace quirn::platform
