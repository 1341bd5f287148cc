// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_drawing.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/pdf_page_content.h"

namespace quirn::platform {
namespace {

using Object = QPDFObjectHandle;

std::string point(PDFPoint at) {
  return contentNumber(at.x) + ' ' + contentNumber(at.y) + ' ';
}

// With the operator for as many components: "g", "rg" and "k" to fill, "G", "RG" and "K" to stroke.
std::string inkOperator(const PDFInk& ink, const std::array<const char*, 3>& operators) {
  std::string text;
  for (const double component : ink) text += contentNumber(component) + ' ';
  return text + operators.at(ink.size() == 1 ? 0 : ink.size() == 3 ? 1 : 2) + '\n';
}

std::string penOperators(const PDFPen& pen) {
  std::string text = inkOperator(pen.ink, {"G", "RG", "K"}) + contentNumber(pen.width) + " w\n";
  if (pen.dash.empty()) return text;
  text += "[";
  for (const double length : pen.dash) text += contentNumber(length) + ' ';
  return text + "] 0 d\n";
}

const char* paintOperator(bool fills, bool strokes) {
  if (fills) return strokes ? "B\n" : "f\n";
  return strokes ? "S\n" : "n\n";
}

}  // namespace

PDFInk inkOf(Object array) {
  if (!array.isArray()) return {};
  PDFInk ink;
  for (Object item : array.getArrayAsVector()) {
    double component = 0;
    item.getValueAsNumber(component);
    ink.push_back(std::clamp(component, 0.0, 1.0));
  }
  const bool isKnown = ink.size() == 1 || ink.size() == 3 || ink.size() == 4;
  return isKnown ? ink : PDFInk();
}

void PDFDrawing::setTransparency(double opacity, Blending blending) {
  if (opacity >= 1 && blending == Blending::normal) return;
  Object state = Object::newDictionary();
  state.replaceKey("/ca", Object::newReal(opacity, 4));
  state.replaceKey("/CA", Object::newReal(opacity, 4));
  if (blending == Blending::multiply) state.replaceKey("/BM", Object::newName("/Multiply"));
  states_.replaceKey("/State", state);
  content_ += "/State gs\n";
}

void PDFDrawing::rectangle(const PDFRectangle& rectangle, const PDFInk& fill, const PDFPen& pen) {
  paint(rectanglePath(rectangle), fill, pen);
}

// Four curves, as close to a circle as they come.
void PDFDrawing::ellipse(const PDFRectangle& around, const PDFInk& fill, const PDFPen& pen) {
  constexpr double reach = 0.5522847498;
  const double x = around.midX();
  const double y = around.midY();
  const double width = around.width() / 2;
  const double height = around.height() / 2;
  const auto at = [&](double right, double up) { return point({x + right * width, y + up * height}); };
  paint(at(1, 0) + "m\n" + at(1, reach) + at(reach, 1) + at(0, 1) + "c\n" + at(-reach, 1) + at(-1, reach) + at(-1, 0) +
            "c\n" + at(-1, -reach) + at(-reach, -1) + at(0, -1) + "c\n" + at(reach, -1) + at(1, -reach) + at(1, 0) +
            "c h\n",
        fill, pen);
}

void PDFDrawing::lines(std::span<const PDFPoint> points, Ends ends, const PDFInk& fill, const PDFPen& pen) {
  if (points.empty()) return;
  std::string path = "1 J 1 j\n" + point(points.front()) + "m\n";
  for (const PDFPoint& next : points.subspan(1)) path += point(next) + "l\n";
  if (points.size() == 1) path += point(points.front()) + "l\n";
  if (ends == Ends::closed) path += "h\n";
  paint(path, fill, pen);
}

void PDFDrawing::beginClip(const PDFRectangle& rectangle) {
  content_ += "q\n" + rectanglePath(rectangle) + "W n\n";
}

void PDFDrawing::endClip() {
  content_ += "Q\n";
}

void PDFDrawing::form(Object form, const PDFMatrix& matrix) {
  const std::string name = fmt::format("/Form{}", objects_.getKeys().size());
  objects_.replaceKey(name, form);
  content_ += drawing(name, matrix);
}

Object PDFDrawing::finish(const PDFRectangle& box, const PDFMatrix& matrix) {
  Object form = document_.newStream(content_);
  Object dictionary = form.getDict();
  dictionary.replaceKey("/Type", Object::newName("/XObject"));
  dictionary.replaceKey("/Subtype", Object::newName("/Form"));
  dictionary.replaceKey("/BBox", arrayOf(box));
  dictionary.replaceKey("/Matrix", arrayOf(matrix));
  Object resources = Object::newDictionary();
  resources.replaceKey("/XObject", objects_);
  resources.replaceKey("/ExtGState", states_);
  dictionary.replaceKey("/Resources", resources);
  return form;
}

void PDFDrawing::paint(const std::string& path, const PDFInk& fill, const PDFPen& pen) {
  if (fill.empty() && !pen.isVisible()) return;
  content_ += "q\n";
  if (!fill.empty()) content_ += inkOperator(fill, {"g", "rg", "k"});
  if (pen.isVisible()) content_ += penOperators(pen);
  content_ += path + paintOperator(!fill.empty(), pen.isVisible()) + "Q\n";
}

}  // namespace quirn::platform
