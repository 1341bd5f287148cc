// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_line_ending.h"

#include <cmath>
#include <string>
#include <vector>

namespace quirn::platform {
namespace {

using Object = QPDFObjectHandle;

// The outline of an ending whose tip is at the origin and whose line comes from the left, in widths of the pen.
struct Shape {
  std::vector<PDFPoint> points;
  PDFDrawing::Ends ends = PDFDrawing::Ends::closed;
};

Shape shapeOf(const std::string& name) {
  using enum PDFDrawing::Ends;
  if (name == "/OpenArrow") return {{{-9, 4}, {0, 0}, {-9, -4}}, open};
  if (name == "/ClosedArrow") return {{{-9, 4}, {0, 0}, {-9, -4}}, closed};
  if (name == "/ROpenArrow") return {{{9, 4}, {0, 0}, {9, -4}}, open};
  if (name == "/RClosedArrow") return {{{9, 4}, {0, 0}, {9, -4}}, closed};
  if (name == "/Square") return {{{-3, -3}, {3, -3}, {3, 3}, {-3, 3}}, closed};
  if (name == "/Diamond") return {{{-4, 0}, {0, -4}, {4, 0}, {0, 4}}, closed};
  if (name == "/Butt") return {{{0, -4}, {0, 4}}, open};
  if (name == "/Slash") return {{{-2, -4}, {2, 4}}, open};
  return {};
}

void drawEnding(PDFDrawing& drawing, const std::string& name, PDFPoint tip, PDFPoint from, const PDFPen& pen,
                const PDFInk& fill) {
  const double scale = std::max(1.0, pen.width);
  if (name == "/Circle") {
    const double radius = 3 * scale;
    drawing.ellipse({tip.x - radius, tip.y - radius, tip.x + radius, tip.y + radius}, fill, pen);
    return;
  }
  const double length = std::hypot(tip.x - from.x, tip.y - from.y);
  if (length == 0) return;
  const double cosine = (tip.x - from.x) / length * scale;
  const double sine = (tip.y - from.y) / length * scale;
  const PDFMatrix matrix{cosine, sine, -sine, cosine, tip.x, tip.y};
  Shape shape = shapeOf(name);
  for (PDFPoint& point : shape.points) point = matrix.apply(point);
  drawing.lines(shape.points, shape.ends, shape.ends == PDFDrawing::Ends::closed ? fill : PDFInk(), pen);
}

}  // namespace

void drawLineEndings(PDFDrawing& drawing, Object annotation, std::span<const PDFPoint> points, const PDFPen& pen,
                     const PDFInk& fill) {
  Object names = annotation.getKey("/LE");
  if (!names.isArray() || names.getArrayNItems() != 2 || points.size() < 2) return;
  const auto name = [&](int index) {
    Object item = names.getArrayItem(index);
    return item.isName() ? item.getName() : std::string();
  };
  drawEnding(drawing, name(0), points.front(), points[1], pen, fill);
  drawEnding(drawing, name(1), points.back(), points[points.size() - 2], pen, fill);
}

}  // namespace quirn::platform
