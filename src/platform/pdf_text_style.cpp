// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_text_style.h"

#include <algorithm>
#include <string_view>
#include <utility>

#include "platform/pdf_annotation_border.h"
#include "platform/pdf_content_scanner.h"

namespace quirn::platform {
namespace {

using Object = QPDFObjectHandle;

constexpr double leastSize = 4;
constexpr double usualSize = 12;
constexpr double largestSize = 1000;

PDFColor colorOf(const PDFInk& ink) {
  if (ink.size() == 1) return {ink[0], ink[0], ink[0]};
  if (ink.size() == 3) return {ink[0], ink[1], ink[2]};
  if (ink.size() < 4) return {};
  return {(1 - ink[0]) * (1 - ink[3]), (1 - ink[1]) * (1 - ink[3]), (1 - ink[2]) * (1 - ink[3])};
}

bool mentions(std::string_view name, std::string_view word) {
  return name.find(word) != std::string_view::npos;
}

// A family with the metrics of the font that was meant, or close to them.
void setFont(PDFText& text, const std::string& font) {
  text.family = "Helvetica";
  if (mentions(font, "Tim") || mentions(font, "TiRo") || mentions(font, "Serif")) text.family = "Times";
  if (mentions(font, "Cour") || mentions(font, "Mono")) text.family = "Courier";
  if (mentions(font, "Bold") || mentions(font, "HeBo") || mentions(font, "TiBo")) text.weight = PDFText::Weight::bold;
}

std::string baseFontOf(Object fonts, const std::string& name) {
  Object font = fonts.isDictionary() ? fonts.getKey("/" + name) : Object::newNull();
  Object base = font.isDictionary() ? font.getKey("/BaseFont") : Object::newNull();
  return base.isName() ? base.getName() : name;
}

// The largest size from `size` down at which the text keeps within the rectangle.
double fittingSize(const PDFTextForms& forms, PDFText text, const PDFRectangle& rectangle, double size) {
  for (text.size = size; text.size > leastSize;) {
    const PDFTextExtent extent = forms.measure(text);
    const double room = std::min(rectangle.width() / extent.width, rectangle.height() / extent.height);
    if (!(room < 1)) break;
    // A line grows with its letters; where paragraphs will break isn't known.
    text.size *= text.wrapWidth ? 0.9 : std::min(room, 0.99);
  }
  return std::max(text.size, leastSize);
}

double leftOf(PDFText::Alignment alignment, const PDFRectangle& rectangle, double width) {
  // A line that doesn't fit shows its beginning.
  if (width > rectangle.width() || alignment == PDFText::Alignment::left) return rectangle.left;
  return alignment == PDFText::Alignment::center ? rectangle.midX() - width / 2 : rectangle.right - width;
}

}  // namespace

PDFText styledText(std::string text, const std::string& defaultAppearance, Object fonts) {
  PDFText styled{.text = std::move(text), .size = 0, .family = "Helvetica"};
  PDFContentScanner scanner(defaultAppearance);
  while (const auto word = scanner.next()) {
    const auto numbers = scanner.numbers();
    if (*word == "Tf" && !numbers.empty()) {
      styled.size = std::clamp(numbers.back(), 0.0, largestSize);
      setFont(styled, baseFontOf(fonts, std::string(scanner.name())));
    } else if (*word == "g" || *word == "rg" || *word == "k") {
      styled.color = colorOf(PDFInk(numbers.begin(), numbers.end()));
    }
  }
  return styled;
}

PDFText::Alignment alignmentOf(Object quadding) {
  long long value = 0;
  quadding.getValueAsInt(value);
  if (value == 1) return PDFText::Alignment::center;
  return value == 2 ? PDFText::Alignment::right : PDFText::Alignment::left;
}

void drawText(PDFDrawing& drawing, PDFTextForms& forms, PDFText text, const PDFRectangle& rectangle, PDFTextFlow flow) {
  if (text.text.empty() || rectangle.isEmpty()) return;
  const bool isLine = flow == PDFTextFlow::line;
  if (!isLine) text.wrapWidth = rectangle.width();
  // As other viewers have it: a line grows with its field, paragraphs don't.
  const double first = isLine ? rectangle.height() * 0.8 : usualSize;
  if (text.size == 0) text.size = fittingSize(forms, text, rectangle, first);
  const PDFTextForms::Form form = forms.add(text);
  const double left = isLine ? leftOf(text.alignment, rectangle, form.extent.width) : rectangle.left;
  const double bottom = isLine ? rectangle.midY() - form.extent.height / 2 : rectangle.top - form.extent.height;
  // Letters may touch the edge, and painters round outwards.
  drawing.beginClip(inset(rectangle, -1));
  drawing.form(form.object, PDFMatrix::translation(left, bottom));
  drawing.endClip();
}

}  // namespace quirn::platform
