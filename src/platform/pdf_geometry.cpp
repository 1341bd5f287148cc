// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_geometry.h"

#include <algorithm>
#include <array>

namespace quirn::platform {
namespace {

bool liesOnItsSide(int rotation) {
  return rotation % 180 != 0;
}

}  // namespace

PDFRectangle PDFRectangle::intersection(const PDFRectangle& other) const {
  const PDFRectangle both{std::max(left, other.left), std::max(bottom, other.bottom), std::min(right, other.right),
                          std::min(top, other.top)};
  return both.isEmpty() ? PDFRectangle{both.left, both.bottom, both.left, both.bottom} : both;
}

PDFMatrix PDFMatrix::quarterTurns(int degrees) {
  switch ((degrees % 360 + 360) % 360) {
    case 90: return {0, -1, 1, 0, 0, 0};
    case 180: return {-1, 0, 0, -1, 0, 0};
    case 270: return {0, 1, -1, 0, 0, 0};
    default: return {};
  }
}

PDFMatrix PDFMatrix::then(const PDFMatrix& next) const {
  return {a * next.a + b * next.c, a * next.b + b * next.d,          c * next.a + d * next.c,
          c * next.b + d * next.d, e * next.a + f * next.c + next.e, e * next.b + f * next.d + next.f};
}

PDFRectangle PDFMatrix::apply(const PDFRectangle& rectangle) const {
  const auto& [left, bottom, right, top] = rectangle;
  const std::array corners{apply(PDFPoint{left, bottom}), apply(PDFPoint{right, bottom}), apply(PDFPoint{left, top}),
                           apply(PDFPoint{right, top})};
  const auto [leftmost, rightmost] = std::ranges::minmax(corners, {}, &PDFPoint::x);
  const auto [lowest, highest] = std::ranges::minmax(corners, {}, &PDFPoint::y);
  return {leftmost.x, lowest.y, rightmost.x, highest.y};
}

double PDFPageView::shownWidth() const {
  return (liesOnItsSide(rotation) ? box.height() : box.width()) * userUnit;
}

double PDFPageView::shownHeight() const {
  return (liesOnItsSide(rotation) ? box.width() : box.height()) * userUnit;
}

PDFMatrix drawingTransform(const PDFPageView& page, const PDFRectangle& target) {
  const double fitting = std::min({1.0, target.width() / page.shownWidth(), target.height() / page.shownHeight()});
  const double scale = fitting * page.userUnit;
  return PDFMatrix::translation(-page.box.midX(), -page.box.midY())
      .then(PDFMatrix::quarterTurns(page.rotation))
      .then(PDFMatrix::scaling(scale, scale))
      .then(PDFMatrix::translation(target.midX(), target.midY()));
}

PDFMatrix uprightTransform(const PDFPageView& page) {
  const PDFRectangle upright = uprightBox(page);
  return PDFMatrix::translation(-upright.midX(), -upright.midY())
      .then(PDFMatrix::quarterTurns(-page.rotation))
      .then(PDFMatrix::translation(page.box.midX(), page.box.midY()));
}

PDFRectangle uprightBox(const PDFPageView& page) {
  const auto& box = page.box;
  return liesOnItsSide(page.rotation)
             ? PDFRectangle{box.left, box.bottom, box.left + box.height(), box.bottom + box.width()}
             : box;
}

}  // namespace quirn::platform
