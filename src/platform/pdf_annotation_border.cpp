// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_annotation_border.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quirn::platform {
namespace {

using Object = QPDFObjectHandle;

constexpr double widest = 1000;

std::vector<double> lengths(Object array) {
  std::vector<double> all;
  if (!array.isArray()) return all;
  for (Object item : array.getArrayAsVector()) {
    double length = 0;
    if (item.getValueAsNumber(length) && length >= 0) all.push_back(length);
  }
  // Dashes of no length would never end.
  const bool isDash = std::ranges::any_of(all, [](double length) { return length > 0; });
  return isDash ? all : std::vector<double>();
}

// Along the inside of the box; the light comes from the upper left.
void drawEdges(PDFDrawing& drawing, const PDFRectangle& box, double width, const PDFInk& upperLeft,
               const PDFInk& lowerRight) {
  const PDFRectangle inner = inset(box, width);
  const std::array upper{PDFPoint{box.left, box.bottom},  PDFPoint{box.left, box.top},
                         PDFPoint{box.right, box.top},    PDFPoint{inner.right, inner.top},
                         PDFPoint{inner.left, inner.top}, PDFPoint{inner.left, inner.bottom}};
  const std::array lower{PDFPoint{box.left, box.bottom},      PDFPoint{box.right, box.bottom},
                         PDFPoint{box.right, box.top},        PDFPoint{inner.right, inner.top},
                         PDFPoint{inner.right, inner.bottom}, PDFPoint{inner.left, inner.bottom}};
  drawing.lines(upper, PDFDrawing::Ends::closed, upperLeft, {});
  drawing.lines(lower, PDFDrawing::Ends::closed, lowerRight, {});
}

}  // namespace

PDFPen penOf(Object annotation, PDFInk ink) {
  PDFPen pen{std::move(ink), 1, {}};
  Object style = annotation.getKey("/BS");
  Object border = annotation.getKey("/Border");
  if (style.isDictionary()) {
    style.getKey("/W").getValueAsNumber(pen.width);
    if (style.getKey("/S").isNameAndEquals("/D"))
      pen.dash = style.hasKey("/D") ? lengths(style.getKey("/D")) : std::vector<double>{3};
  } else if (border.isArray() && border.getArrayNItems() >= 3) {
    border.getArrayItem(2).getValueAsNumber(pen.width);
    if (border.getArrayNItems() > 3) pen.dash = lengths(border.getArrayItem(3));
  }
  pen.width = std::clamp(pen.width, 0.0, widest);
  return pen;
}

bool statesBorder(Object annotation) {
  return annotation.hasKey("/BS") || annotation.hasKey("/Border");
}

PDFRectangle drawBorder(PDFDrawing& drawing, Object annotation, const PDFRectangle& box, const PDFInk& fill,
                        const PDFPen& pen) {
  Object border = annotation.getKey("/BS");
  Object style = border.isDictionary() ? border.getKey("/S") : Object::newNull();
  const double width = pen.isVisible() ? pen.width : 0;
  const PDFRectangle middle = inset(box, width / 2);
  const PDFRectangle inner = inset(box, width);
  if (style.isNameAndEquals("/U")) {
    drawing.rectangle(box, fill, {});
    const std::array line{PDFPoint{box.left, middle.bottom}, PDFPoint{box.right, middle.bottom}};
    drawing.lines(line, PDFDrawing::Ends::open, {}, pen);
    return inner;
  }
  drawing.rectangle(middle, fill, pen);
  const bool isRaised = style.isNameAndEquals("/B");
  if (!isRaised && !style.isNameAndEquals("/I")) return inner;
  drawEdges(drawing, inner, pen.width, isRaised ? PDFInk{1} : PDFInk{0.5}, isRaised ? PDFInk{0.5} : PDFInk{0.75});
  return inset(inner, pen.width);
}

PDFRectangle inset(const PDFRectangle& rectangle, double by) {
  const double x = std::min(by, rectangle.width() / 2);
  const double y = std::min(by, rectangle.height() / 2);
  return {rectangle.left + x, rectangle.bottom + y, rectangle.right - x, rectangle.top - y};
}

}  // namespace quirn::platform
