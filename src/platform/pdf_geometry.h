// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Rectangles and transforms of a page's plane: x grows to the right, y upwards, one unit is a point (1/72 inch) where
// a page has no unit of its own. ISO 32000-1, 8.3.

#pragma once

namespace quirn::platform {

struct PDFPoint {
  double x = 0;
  double y = 0;
};

struct PDFRectangle {
  double left = 0;
  double bottom = 0;
  double right = 0;
  double top = 0;

  static PDFRectangle ofSize(double width, double height) { return {0, 0, width, height}; }

  double width() const { return right - left; }
  double height() const { return top - bottom; }
  double midX() const { return left + width() / 2; }
  double midY() const { return bottom + height() / 2; }
  bool isEmpty() const { return !(width() > 0 && height() > 0); }

  // What both cover; empty where they don't meet.
  PDFRectangle intersection(const PDFRectangle& other) const;

  bool operator==(const PDFRectangle&) const = default;
};

// The affine map x' = a x + c y + e, y' = b x + d y + f.
struct PDFMatrix {
  double a = 1;
  double b = 0;
  double c = 0;
  double d = 1;
  double e = 0;
  double f = 0;

  static PDFMatrix translation(double x, double y) { return {1, 0, 0, 1, x, y}; }
  static PDFMatrix scaling(double x, double y) { return {x, 0, 0, y, 0, 0}; }
  // Clockwise, by a multiple of 90 degrees.
  static PDFMatrix quarterTurns(int degrees);

  // This map first, then the other.
  PDFMatrix then(const PDFMatrix& next) const;
  PDFPoint apply(PDFPoint point) const { return {a * point.x + c * point.y + e, b * point.x + d * point.y + f}; }
  // The smallest upright rectangle around the image of `rectangle`.
  PDFRectangle apply(const PDFRectangle& rectangle) const;

  bool operator==(const PDFMatrix&) const = default;
};

// How a page is shown: the box that is visible, the clockwise turn in degrees (a multiple of 90), and the size of the
// page's unit in points.
struct PDFPageView {
  PDFRectangle box;
  int rotation = 0;
  double userUnit = 1;

  // In points, as a reader sees the page: turned, and with its unit applied.
  double shownWidth() const;
  double shownHeight() const;
};

// Maps the page's plane so that its box, as a reader sees it, stands with its centre on the centre of `target`: with
// its aspect kept, shrunk to fit, and never enlarged.
PDFMatrix drawingTransform(const PDFPageView& page, const PDFRectangle& target);

// Maps a plane in which the page stands upright, as a reader sees it, into the page's own: the box of the first is
// uprightBox(). For drawing upright on a turned page. Lengths are in the page's unit in both.
PDFMatrix uprightTransform(const PDFPageView& page);
// Of the size of the page's box as shown, with the same lower left corner.
PDFRectangle uprightBox(const PDFPageView& page);

}  // namespace quirn::platform
