// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_markup_appearance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "platform/pdf_annotation_border.h"
#include "platform/pdf_line_ending.h"
#include "platform/pdf_text_style.h"

namespace quirn::platform {
namespace {

using Object = QPDFObjectHandle;
using Points = std::vector<PDFPoint>;

struct Markup {
  PDFDrawing& drawing;
  PDFTextForms& texts;
  Object annotation;
  PDFRectangle rectangle;

  PDFInk ink(const PDFInk& otherwise) const {
    PDFInk own = inkOf(Object(annotation).getKey("/C"));
    return own.empty() ? otherwise : own;
  }
  PDFInk interior() const { return inkOf(Object(annotation).getKey("/IC")); }
  PDFPen pen() const { return penOf(annotation, ink({0})); }
};

constexpr std::size_t mostPoints = 100'000;

Points pointsOf(Object array) {
  Points points;
  if (!array.isArray()) return points;
  const std::vector<Object> numbers = array.getArrayAsVector();
  for (std::size_t i = 0; i + 1 < numbers.size() && points.size() < mostPoints; i += 2) {
    PDFPoint point;
    if (Object(numbers[i]).getValueAsNumber(point.x) && Object(numbers[i + 1]).getValueAsNumber(point.y))
      points.push_back(point);
  }
  return points;
}

PDFPoint between(PDFPoint one, PDFPoint other, double part) {
  return {one.x + (other.x - one.x) * part, one.y + (other.y - one.y) * part};
}

double distance(PDFPoint one, PDFPoint other) {
  return std::hypot(one.x - other.x, one.y - other.y);
}

// The pieces of text that are marked, corner by corner as programs write them: upper left, upper right, lower left,
// lower right.
std::vector<Points> quads(const Markup& markup) {
  const Points points = pointsOf(Object(markup.annotation).getKey("/QuadPoints"));
  std::vector<Points> all;
  for (std::size_t i = 0; i + 3 < points.size(); i += 4)
    all.emplace_back(points.begin() + static_cast<long>(i), points.begin() + static_cast<long>(i) + 4);
  const auto& [left, bottom, right, top] = markup.rectangle;
  if (all.empty()) all.push_back({{left, top}, {right, top}, {left, bottom}, {right, bottom}});
  return all;
}

void drawHighlight(const Markup& markup) {
  for (const Points& quad : quads(markup))
    markup.drawing.lines(Points{quad[0], quad[1], quad[3], quad[2]}, PDFDrawing::Ends::closed, markup.ink({1, 1, 0}),
                         {});
}

// A line through the quad, `height` from its lower edge in parts of its own height.
void drawLineAt(const Markup& markup, double height) {
  for (const Points& quad : quads(markup)) {
    const PDFPen pen{markup.ink({0}), std::max(0.5, distance(quad[0], quad[2]) / 16), {}};
    const Points line{between(quad[2], quad[0], height), between(quad[3], quad[1], height)};
    markup.drawing.lines(line, PDFDrawing::Ends::open, {}, pen);
  }
}

void drawSquiggle(const Markup& markup) {
  for (const Points& quad : quads(markup)) {
    const double wave = std::max(1.0, distance(quad[0], quad[2]) / 6);
    const double count = std::clamp(std::ceil(distance(quad[2], quad[3]) / wave), 1.0, 10'000.0);
    Points line;
    for (double i = 0; i <= count; ++i) {
      const double height = static_cast<int>(i) % 2 == 0 ? 0.02 : 0.14;
      line.push_back(between(between(quad[2], quad[3], i / count), between(quad[0], quad[1], i / count), height));
    }
    markup.drawing.lines(line, PDFDrawing::Ends::open, {}, {markup.ink({0}), wave / 5, {}});
  }
}

PDFRectangle shapeBox(const Markup& markup) {
  PDFRectangle box = markup.rectangle;
  Object differences = Object(markup.annotation).getKey("/RD");
  if (differences.isArray() && differences.getArrayNItems() == 4) {
    std::array<double, 4> by{};
    for (int i = 0; i < 4; ++i) differences.getArrayItem(i).getValueAsNumber(by.at(static_cast<std::size_t>(i)));
    const PDFRectangle inner{box.left + by[0], box.bottom + by[1], box.right - by[2], box.top - by[3]};
    if (!inner.isEmpty()) box = inner;
  }
  return inset(box, markup.pen().width / 2);
}

void drawPath(const Markup& markup, PDFDrawing::Ends ends) {
  const Points points = pointsOf(Object(markup.annotation).getKey("/Vertices"));
  markup.drawing.lines(points, ends, ends == PDFDrawing::Ends::closed ? markup.interior() : PDFInk(), markup.pen());
  if (ends == PDFDrawing::Ends::open)
    drawLineEndings(markup.drawing, markup.annotation, points, markup.pen(), markup.interior());
}

void drawLine(const Markup& markup) {
  const Points points = pointsOf(Object(markup.annotation).getKey("/L"));
  markup.drawing.lines(points, PDFDrawing::Ends::open, {}, markup.pen());
  drawLineEndings(markup.drawing, markup.annotation, points, markup.pen(), markup.interior());
}

void drawInk(const Markup& markup) {
  Object strokes = Object(markup.annotation).getKey("/InkList");
  if (!strokes.isArray()) return;
  for (const Object& stroke : strokes.getArrayAsVector())
    markup.drawing.lines(pointsOf(stroke), PDFDrawing::Ends::open, {}, markup.pen());
}

std::string textOf(Object string) {
  return string.isString() ? string.getUTF8Value() : std::string();
}

void drawFreeText(const Markup& markup) {
  Object annotation = markup.annotation;
  const std::string appearance = annotation.getKey("/DA").isString() ? annotation.getKey("/DA").getStringValue() : "";
  PDFText text = styledText(textOf(annotation.getKey("/Contents")), appearance, Object::newNull());
  text.alignment = alignmentOf(annotation.getKey("/Q"));
  // Its colour is that of the background; the border has the text's.
  const PDFPen pen = penOf(annotation, {text.color.red, text.color.green, text.color.blue});
  const PDFRectangle box = shapeBox(markup);
  markup.drawing.rectangle(box, inkOf(annotation.getKey("/C")), pen);
  constexpr double padding = 2;
  drawText(markup.drawing, markup.texts, std::move(text), inset(box, padding + pen.width / 2), PDFTextFlow::paragraphs);
}

// The name on a rubber stamp, such as "NotForPublicRelease".
std::string stampText(Object annotation) {
  Object name = annotation.getKey("/Name");
  std::string text;
  for (const char letter : name.isName() ? name.getName().substr(1) : std::string("Draft")) {
    if (letter >= 'A' && letter <= 'Z' && !text.empty()) text += ' ';
    text += static_cast<char>(letter >= 'a' && letter <= 'z' ? letter - 'a' + 'A' : letter);
  }
  return text;
}

void drawStamp(const Markup& markup) {
  const PDFInk red = markup.ink({0.75, 0.1, 0.1});
  const double size = markup.rectangle.height();
  const PDFRectangle frame = inset(markup.rectangle, size / 12);
  markup.drawing.rectangle(frame, {}, {red, size / 20, {}});
  PDFText text{.text = stampText(markup.annotation),
               .size = 0,
               .weight = PDFText::Weight::bold,
               .alignment = PDFText::Alignment::center};
  if (red.size() == 3) text.color = {red[0], red[1], red[2]};
  drawText(markup.drawing, markup.texts, std::move(text), inset(frame, size / 10), PDFTextFlow::line);
}

// A sheet with lines at the upper left corner; such an icon has a size of its own.
void drawNote(const Markup& markup) {
  constexpr double side = 18;
  constexpr PDFPoint corner{1, 1};
  const PDFRectangle sheet{markup.rectangle.left + corner.x, markup.rectangle.top - side, markup.rectangle.left + side,
                           markup.rectangle.top - corner.y};
  const PDFPen pen{{0}, 0.75, {}};
  markup.drawing.rectangle(sheet, markup.ink({1, 0.82, 0}), pen);
  for (const double part : {0.25, 0.5, 0.75}) {
    const double y = sheet.bottom + sheet.height() * part;
    markup.drawing.lines(Points{{sheet.left + 3, y}, {sheet.right - 3, y}}, PDFDrawing::Ends::open, {}, pen);
  }
}

void drawCaret(const Markup& markup) {
  const auto& [left, bottom, right, top] = markup.rectangle;
  const Points triangle{{left, bottom}, {(left + right) / 2, top}, {right, bottom}};
  markup.drawing.lines(triangle, PDFDrawing::Ends::closed, markup.ink({0, 0, 1}), {});
}

void drawLinkBorder(const Markup& markup) {
  if (statesBorder(markup.annotation))
    drawBorder(markup.drawing, markup.annotation, markup.rectangle, {}, markup.pen());
}

using Draw = std::function<void(const Markup&)>;

const std::map<std::string, Draw>& drawings() {
  using enum PDFDrawing::Ends;
  static const std::map<std::string, Draw> all{
      {"/Highlight", &drawHighlight},
      {"/Underline", [](const Markup& markup) { drawLineAt(markup, 0.08); }},
      {"/StrikeOut", [](const Markup& markup) { drawLineAt(markup, 0.45); }},
      {"/Squiggly", &drawSquiggle},
      {"/Square",
       [](const Markup& markup) { markup.drawing.rectangle(shapeBox(markup), markup.interior(), markup.pen()); }},
      {"/Circle",
       [](const Markup& markup) { markup.drawing.ellipse(shapeBox(markup), markup.interior(), markup.pen()); }},
      {"/Polygon", [](const Markup& markup) { drawPath(markup, closed); }},
      {"/PolyLine", [](const Markup& markup) { drawPath(markup, open); }},
      {"/Line", &drawLine},
      {"/Ink", &drawInk},
      {"/FreeText", &drawFreeText},
      {"/Stamp", &drawStamp},
      {"/Text", &drawNote},
      {"/FileAttachment", &drawNote},
      {"/Caret", &drawCaret},
      {"/Link", &drawLinkBorder},
  };
  return all;
}

}  // namespace

PDFRectangle drawMarkup(PDFDrawing& drawing, PDFTextForms& texts, Object annotation, const PDFRectangle& rectangle) {
  Object kind = annotation.getKey("/Subtype");
  const auto draw = drawings().find(kind.isName() ? kind.getName() : std::string());
  if (draw == drawings().end()) return rectangle;
  double opacity = 1;
  annotation.getKey("/CA").getValueAsNumber(opacity);
  const bool isHighlight = draw->first == "/Highlight";
  drawing.setTransparency(std::clamp(opacity, 0.0, 1.0),
                          isHighlight ? PDFDrawing::Blending::multiply : PDFDrawing::Blending::normal);
  draw->second({drawing, texts, annotation, rectangle});
  // Lines, their endings and icons go beyond the rectangle where a program measured it tightly.
  constexpr double room = 24;
  return {rectangle.left - room, rectangle.bottom - room, rectangle.right + room, rectangle.top + room};
}

}  // namespace quirn::platform
