// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_field_appearance.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string>
#include <utility>
#include <vector>

#include "platform/pdf_annotation_border.h"
#include "platform/pdf_text_style.h"
#include "platform/text.h"

namespace quirn::platform {
namespace {

using Object = QPDFObjectHandle;

struct Widget {
  PDFDrawing& drawing;
  PDFTextForms& texts;
  const PDFField& field;
  PDFRectangle inner;  // within the border
  PDFPen pen;          // of the border
};

std::vector<std::string> charactersOf(std::string_view text) {
  std::vector<std::string> characters;
  while (!text.empty()) {
    const std::size_t length = std::max<std::size_t>(1, firstScalar(text).length);
    characters.emplace_back(text.substr(0, length));
    text.remove_prefix(length);
  }
  return characters;
}

PDFText styled(const Widget& widget, std::string text) {
  PDFText result = styledText(std::move(text), widget.field.defaultAppearance(), widget.field.fonts());
  result.alignment = alignmentOf(widget.field.entry("/Q"));
  return result;
}

void drawLine(const Widget& widget, std::string text) {
  const auto& [left, bottom, right, top] = widget.inner;
  drawText(widget.drawing, widget.texts, styled(widget, std::move(text)), {left + 1, bottom, right - 1, top},
           PDFTextFlow::line);
}

// One character to a cell; what has a border has lines between the cells.
void drawComb(const Widget& widget, std::string_view value, int cells) {
  PDFText text = styled(widget, {});
  if (text.size == 0) text.size = std::clamp(widget.inner.height() * 0.7, 4.0, 12.0);
  text.alignment = PDFText::Alignment::center;
  const double width = widget.inner.width() / cells;
  double left = widget.inner.left;
  for (int cell = 1; cell < cells; ++cell) {
    const double x = left + width * cell;
    const std::array line{PDFPoint{x, widget.inner.bottom}, PDFPoint{x, widget.inner.top}};
    widget.drawing.lines(line, PDFDrawing::Ends::open, {}, widget.pen);
  }
  for (const std::string& character : charactersOf(value)) {
    if (left + width > widget.inner.right + 1) break;
    text.text = character;
    drawText(widget.drawing, widget.texts, text, {left, widget.inner.bottom, left + width, widget.inner.top},
             PDFTextFlow::line);
    left += width;
  }
}

void drawTextField(const Widget& widget) {
  const std::vector<std::string> values = widget.field.shownValues();
  if (values.empty()) return;
  std::string value = values.front();
  if (widget.field.isPassword()) value = std::string(charactersOf(value).size(), '*');
  if (const int cells = widget.field.combLength(); cells > 0) {
    drawComb(widget, value, cells);
  } else if (widget.field.isMultiline()) {
    drawText(widget.drawing, widget.texts, styled(widget, std::move(value)), inset(widget.inner, 2),
             PDFTextFlow::paragraphs);
  } else {
    drawLine(widget, std::move(value));
  }
}

// The options from the first that is shown, those that are chosen on a coloured ground.
void drawListBox(const Widget& widget) {
  const PDFInk chosenGround{0.6, 0.75, 0.85};
  const std::vector<std::string> chosen = widget.field.shownValues();
  const std::vector<std::string> options = widget.field.options();
  PDFText text = styled(widget, {});
  if (text.size == 0) text.size = 12;
  const double height = text.size * 1.2;
  long long first = 0;
  widget.field.entry("/TI").getValueAsInt(first);
  double top = widget.inner.top;
  for (auto i = static_cast<std::size_t>(std::max(0LL, first)); i < options.size() && top > widget.inner.bottom; ++i) {
    const PDFRectangle row{widget.inner.left, std::max(top - height, widget.inner.bottom), widget.inner.right, top};
    if (std::ranges::find(chosen, options[i]) != chosen.end()) widget.drawing.rectangle(row, chosenGround, {});
    text.text = options[i];
    drawText(widget.drawing, widget.texts, text, {row.left + 2, top - height, row.right, top}, PDFTextFlow::line);
    top -= height;
  }
}

void drawChoice(const Widget& widget) {
  if (!widget.field.isCombo()) {
    drawListBox(widget);
    return;
  }
  const std::vector<std::string> values = widget.field.shownValues();
  if (!values.empty()) drawLine(widget, values.front());
}

// The mark of a button, a character of the font of dingbats that viewers draw it with.
char markOf(const PDFField& field, char otherwise) {
  Object caption = field.characteristic("/CA");
  const std::string text = caption.isString() ? caption.getStringValue() : std::string();
  return text.empty() ? otherwise : text.front();
}

void drawCross(const Widget& widget, const PDFRectangle& box, const PDFPen& pen) {
  const std::array rising{PDFPoint{box.left, box.bottom}, PDFPoint{box.right, box.top}};
  const std::array falling{PDFPoint{box.left, box.top}, PDFPoint{box.right, box.bottom}};
  widget.drawing.lines(rising, PDFDrawing::Ends::open, {}, pen);
  widget.drawing.lines(falling, PDFDrawing::Ends::open, {}, pen);
}

// Five points, one of them upwards.
void drawStar(const Widget& widget, PDFPoint center, double radius, const PDFInk& ink) {
  constexpr double innerRadius = 0.382;
  std::array<PDFPoint, 10> points;
  for (std::size_t i = 0; i < points.size(); ++i) {
    const double angle = std::numbers::pi * (0.5 + static_cast<double>(i) / 5);
    const double reach = i % 2 == 0 ? radius : radius * innerRadius;
    points.at(i) = {center.x + reach * std::cos(angle), center.y + reach * std::sin(angle)};
  }
  widget.drawing.lines(points, PDFDrawing::Ends::closed, ink, {});
}

void drawMark(const Widget& widget, char mark) {
  const double side = std::min(widget.inner.width(), widget.inner.height());
  const double half = side * 0.3;
  const PDFPoint center{widget.inner.midX(), widget.inner.midY()};
  const PDFRectangle box{center.x - half, center.y - half, center.x + half, center.y + half};
  const PDFColor color = styled(widget, {}).color;
  const PDFInk ink{color.red, color.green, color.blue};
  const PDFPen pen{ink, side / 9, {}};
  using enum PDFDrawing::Ends;
  switch (mark) {
    case 'l': widget.drawing.ellipse(box, ink, {}); return;
    case 'n': widget.drawing.rectangle(box, ink, {}); return;
    case '8': drawCross(widget, box, pen); return;
    case 'H': drawStar(widget, center, half * 1.2, ink); return;
    case 'u': {
      const std::array diamond{PDFPoint{box.left, center.y}, PDFPoint{center.x, box.top}, PDFPoint{box.right, center.y},
                               PDFPoint{center.x, box.bottom}};
      widget.drawing.lines(diamond, closed, ink, {});
      return;
    }
    default: {
      const std::array check{PDFPoint{box.left, center.y - half / 6}, PDFPoint{center.x - half / 3, box.bottom},
                             PDFPoint{box.right, box.top}};
      widget.drawing.lines(check, open, {}, pen);
    }
  }
}

void drawCaption(const Widget& widget) {
  Object caption = widget.field.characteristic("/CA");
  if (!caption.isString()) return;
  PDFText text = styled(widget, caption.getUTF8Value());
  text.alignment = PDFText::Alignment::center;
  drawText(widget.drawing, widget.texts, std::move(text), widget.inner, PDFTextFlow::line);
}

void drawContent(const Widget& widget) {
  switch (widget.field.kind()) {
    case PDFField::Kind::text: drawTextField(widget); return;
    case PDFField::Kind::choice: drawChoice(widget); return;
    case PDFField::Kind::push: drawCaption(widget); return;
    case PDFField::Kind::check:
      if (widget.field.isOn()) drawMark(widget, markOf(widget.field, '4'));
      return;
    case PDFField::Kind::radio:
      if (widget.field.isOn()) drawMark(widget, markOf(widget.field, 'l'));
      return;
    case PDFField::Kind::other: return;
  }
}

PDFRectangle drawRoundBorder(PDFDrawing& drawing, const PDFRectangle& box, const PDFInk& ground, const PDFPen& pen) {
  const double width = pen.isVisible() ? pen.width : 0;
  drawing.ellipse(inset(box, width / 2), ground, pen);
  return inset(box, width);
}

}  // namespace

void drawField(PDFDrawing& drawing, PDFTextForms& texts, Object widget, const PDFField& field,
               const PDFRectangle& box) {
  const PDFInk ground = inkOf(field.characteristic("/BG"));
  const PDFPen pen = penOf(widget, inkOf(field.characteristic("/BC")));
  const bool isRound = field.kind() == PDFField::Kind::radio && markOf(field, 'l') == 'l';
  const PDFRectangle inner =
      isRound ? drawRoundBorder(drawing, box, ground, pen) : drawBorder(drawing, widget, box, ground, pen);
  drawContent({drawing, texts, field, inset(inner, 1), pen});
}

}  // namespace quirn::platform
