// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Content in the making: paths, colours and forms as the operators of a new form, for the sources of platform/ alone.

#pragma once

#include <span>
#include <string>
#include <vector>

#include "platform/pdf_geometry.h"
#include "platform/pdf_library.h"

namespace quirn::platform {

// Components of gray, RGB or CMYK, by their number; none at all is no colour.
using PDFInk = std::vector<double>;

// What arrays such as /C and /BG say; no colour for anything else.
PDFInk inkOf(QPDFObjectHandle array);

// How an outline is drawn.
struct PDFPen {
  PDFInk ink;
  double width = 1;
  std::vector<double> dash;  // lengths on and off; none for a solid line

  bool isVisible() const { return !ink.empty() && width > 0; }
};

class PDFDrawing {
 public:
  enum class Blending { normal, multiply };
  enum class Ends { open, closed };

  explicit PDFDrawing(QPDF& document) : document_(document) {}

  bool isEmpty() const { return content_.empty(); }

  // Of everything; from 0 to 1. Called first.
  void setTransparency(double opacity, Blending blending);

  // Shapes are filled with `fill` and outlined with `pen`, where these show anything.
  void rectangle(const PDFRectangle& rectangle, const PDFInk& fill, const PDFPen& pen);
  void ellipse(const PDFRectangle& around, const PDFInk& fill, const PDFPen& pen);
  void lines(std::span<const PDFPoint> points, Ends ends, const PDFInk& fill, const PDFPen& pen);

  // What is drawn until endClip() is cut at the rectangle.
  void beginClip(const PDFRectangle& rectangle);
  void endClip();

  void form(QPDFObjectHandle form, const PDFMatrix& matrix);

  // All of it as a form, cut to `box` and mapped by `matrix`; the last call.
  QPDFObjectHandle finish(const PDFRectangle& box, const PDFMatrix& matrix);

 private:
  void paint(const std::string& path, const PDFInk& fill, const PDFPen& pen);

  QPDF& document_;
  std::string content_;
  QPDFObjectHandle objects_ = QPDFObjectHandle::newDictionary();
  QPDFObjectHandle states_ = QPDFObjectHandle::newDictionary();
};

}  // namespace quirn::platform
