// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Arrow heads and their like (ISO 32000-1, table 176), for the sources of platform/ alone.

#pragma once

#include <span>

#include "platform/pdf_drawing.h"

namespace quirn::platform {

// Draws what the annotation's /LE says at both ends of a line through the points.
void drawLineEndings(PDFDrawing& drawing, QPDFObjectHandle annotation, std::span<const PDFPoint> points,
                     const PDFPen& pen, const PDFInk& fill);

}  // namespace quirn::platform
