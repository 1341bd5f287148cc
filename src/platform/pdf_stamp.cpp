// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_stamp.h"

#include <algorithm>
#include <map>
#include <utility>
#include <vector>

#include "platform/pdf_canvas.h"
#include "platform/pdf_internal.h"
#include "platform/pdf_page_content.h"
#include "platform/pdf_text_forms.h"

namespace quirn::platform {
namespace {

PDFPageView mediaView(const PDFDocument& document, std::size_t page) {
  return {document.box(page, PDFBox::media), document.rotation(page), 1};
}

double leftEdge(PDFText::Alignment alignment, const PDFRectangle& rectangle, double width) {
  switch (alignment) {
    case PDFText::Alignment::left: return rectangle.left;
    case PDFText::Alignment::center: return rectangle.midX() - width / 2;
    case PDFText::Alignment::right: return rectangle.right - width;
  }
  throw std::logic_error("alignment");
}

PDFMatrix placement(const PDFTextExtent& extent, PDFText::Alignment alignment, const PDFRectangle& rectangle) {
  const double scale = extent.width > 0 ? std::min(1.0, rectangle.width() / extent.width) : 1;
  return PDFMatrix::scaling(scale, scale)
      .then(PDFMatrix::translation(leftEdge(alignment, rectangle, extent.width * scale),
                                   rectangle.midY() - extent.height * scale / 2));
}

}  // namespace

struct PDFStamper::State {
  explicit State(PDFDocument& stamped) : document(stamped), texts(*stamped.internals().qpdf) {}

  PDFDocument& document;
  PDFTextForms texts;
  std::map<std::size_t, std::vector<PlacedObject>> placed;  // by page
};

PDFStamper::PDFStamper(PDFDocument& document) : state_(std::make_unique<State>(document)) {}

PDFStamper::~PDFStamper() = default;

PDFRectangle PDFStamper::shownBox(std::size_t page) const {
  return uprightBox(mediaView(state_->document, page));
}

void PDFStamper::stamp(std::size_t page, const PDFText& line, const PDFRectangle& rectangle) {
  const PDFMatrix toPage = uprightTransform(mediaView(state_->document, page));
  state_->document.internals().guarded(PDFError::Kind::unreadable, [&] {
    const PDFTextForms::Form form = state_->texts.add(line);
    state_->placed[page].push_back({form.object, placement(form.extent, line.alignment, rectangle).then(toPage)});
  });
}

void PDFStamper::finish() {
  const PDFDocument::Internals& internals = state_->document.internals();
  internals.guarded(PDFError::Kind::unreadable, [&] {
    state_->texts.finish();
    for (const auto& [page, objects] : state_->placed) drawOnPage(*internals.qpdf, internals.pages.at(page), objects);
  });
}

}  // namespace quirn::platform
