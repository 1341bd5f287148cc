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

void drawBorder(PDFDrawing& drawing, Object annotation, const PDFRectangle& box, const PDFInk& fill,
                const PDFPen& pen) {
  Object style = annotation.getKey("/BS");
  const PDFRectangle middle = inset(box, pen.isVisible() ? pen.width / 2 : 0);
  const bool isUnderline = style.isDictionary() && style.getKey("/S").isNameAndEquals("/U");
  if (!isUnderline) {
    drawing.rectangle(middle, fill, pen);
    return;
  }
  drawing.rectangle(box, fill, {});
  const std::array line{PDFPoint{box.left, middle.bottom}, PDFPoint{box.right, middle.bottom}};
  drawing.lines(line, PDFDrawing::Ends::open, {}, pen);
}

PDFRectangle inset(const PDFRectangle& rectangle, double by) {
  const double x = std::min(by, rectangle.width() / 2);
  const double y = std::min(by, rectangle.height() / 2);
  return {rectangle.left + x, rectangle.bottom + y, rectangle.right - x, rectangle.top - y};
}

}  // namespace quirn::platform
