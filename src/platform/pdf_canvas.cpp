// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_canvas.h"

#include <fmt/format.h>

#include <cmath>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/pdf_internal.h"
#include "platform/pdf_page_content.h"

namespace quirn::platform {
namespace {

using Object = QPDFObjectHandle;

double userUnitOf(Object page) {
  double unit = 1;
  const bool isNumber = page.getKey("/UserUnit").getValueAsNumber(unit);
  return isNumber && std::isfinite(unit) && unit > 0 ? unit : 1;
}

Object dictionaryOf(const PDFSheet& sheet) {
  Object page = Object::newDictionary();
  page.replaceKey("/Type", Object::newName("/Page"));
  page.replaceKey("/MediaBox", arrayOf(sheet.mediaBox));
  if (sheet.cropBox != sheet.mediaBox) page.replaceKey("/CropBox", arrayOf(sheet.cropBox));
  if (sheet.rotation != 0) page.replaceKey("/Rotate", Object::newInteger(sheet.rotation));
  if (sheet.userUnit != 1) page.replaceKey("/UserUnit", Object::newReal(sheet.userUnit));
  return page;
}

}  // namespace

PDFPageView viewOf(const PDFDocument& document, std::size_t page) {
  double unit = 1;
  const PDFDocument::Internals& internals = document.internals();
  internals.guarded(PDFError::Kind::unreadable, [&] { unit = userUnitOf(internals.pages.at(page)); });
  return {document.box(page, PDFBox::crop), document.rotation(page), unit};
}

struct PDFCanvas::State {
  explicit State(PDFDocument& drawn) : document(drawn) {}

  QPDF& qpdf() const { return *document.internals().qpdf; }
  void guarded(const std::function<void()>& work) const {
    document.internals().guarded(PDFError::Kind::unreadable, work);
  }
  Object formOf(std::size_t page, const PDFRectangle& box);
  void draw(std::size_t page, const PDFRectangle& box, const PDFMatrix& transform);

  struct Form {
    PDFRectangle box;
    Object object;
  };

  PDFDocument& document;
  std::map<std::size_t, Form> forms;  // by page: one that is drawn on many sheets is there once
  std::vector<Object> pages;
  // Of the page that is being drawn.
  PDFSheet sheet;
  std::string content;
  Object objects;
  Object group;
};

Object PDFCanvas::State::formOf(std::size_t page, const PDFRectangle& box) {
  const auto known = forms.find(page);
  if (known != forms.end() && known->second.box == box) return known->second.object;
  const Object& drawn = document.internals().pages.at(page);
  PDFDocument::Internals::requireReadable(std::span(&drawn, 1));
  const Object form = formOfPage(qpdf(), drawn, box);
  forms.insert_or_assign(page, Form{box, form});
  return form;
}

void PDFCanvas::State::draw(std::size_t page, const PDFRectangle& box, const PDFMatrix& transform) {
  Object form = formOf(page, box);
  const std::string name = fmt::format("/Page{}", page + 1);
  objects.replaceKey(name, form);
  content += drawing(name, transform);
  // The colours that transparent content is mixed in.
  if (!group.isDictionary()) group = form.getDict().getKey("/Group");
}

PDFCanvas::PDFCanvas(PDFDocument& document) : state_(std::make_unique<State>(document)) {}

PDFCanvas::~PDFCanvas() = default;

void PDFCanvas::beginPage(const PDFSheet& sheet) {
  state_->sheet = sheet;
  state_->content.clear();
  state_->objects = Object::newDictionary();
  state_->group = Object::newNull();
}

void PDFCanvas::drawPage(std::size_t page, const PDFRectangle& box, const PDFMatrix& transform) {
  state_->guarded([&] { state_->draw(page, box, transform); });
}

void PDFCanvas::drawPageInto(std::size_t page, const PDFRectangle& target) {
  PDFPageView view = viewOf(state_->document, page);
  view.userUnit /= state_->sheet.userUnit;
  state_->guarded([&] {
    state_->content += "q\n" + rectanglePath(target) + "W n\n";
    state_->draw(page, view.box, drawingTransform(view, target));
    state_->content += "Q\n";
  });
}

void PDFCanvas::endPage() {
  state_->guarded([&] {
    Object resources = Object::newDictionary();
    resources.replaceKey("/XObject", state_->objects);
    Object page = dictionaryOf(state_->sheet);
    page.replaceKey("/Resources", resources);
    page.replaceKey("/Contents", state_->qpdf().newStream(state_->content));
    if (state_->group.isDictionary()) page.replaceKey("/Group", state_->group);
    state_->pages.push_back(state_->qpdf().makeIndirectObject(page));
  });
}

void PDFCanvas::close() {
  state_->guarded([&] {
    QPDF& qpdf = state_->qpdf();
    Object root = Object::newDictionary();
    root.replaceKey("/Type", Object::newName("/Catalog"));
    Object layers = qpdf.getRoot().getKey("/OCProperties");
    if (layers.isDictionary()) root.replaceKey("/OCProperties", layers);
    Object trailer = qpdf.getTrailer();
    trailer.replaceKey("/Root", qpdf.makeIndirectObject(root));
    for (const char* const key : {"/Info", "/ID", "/Encrypt"}) trailer.removeKey(key);
    state_->document.internals().setPages(state_->pages);
  });
}

}  // namespace quirn::platform
