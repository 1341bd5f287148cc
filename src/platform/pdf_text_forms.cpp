// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_text_forms.h"

#include <memory>
#include <qpdf/Buffer.hh>

#include "platform/pdf_page_content.h"

namespace quirn::platform {
namespace {

QPDFObjectHandle emptyForm(QPDF& document, const PDFText& text) {
  QPDFObjectHandle form = document.newStream(std::string());
  QPDFObjectHandle dictionary = form.getDict();
  dictionary.replaceKey("/Type", QPDFObjectHandle::newName("/XObject"));
  dictionary.replaceKey("/Subtype", QPDFObjectHandle::newName("/Form"));
  const double margin = PDFTypesetter::margin * text.size;
  dictionary.replaceKey("/Matrix", arrayOf(PDFMatrix::translation(-margin, -margin)));
  return form;
}

// `source` is a form of another document.
void fill(QPDF& document, QPDFObjectHandle form, QPDFObjectHandle source) {
  const QPDFObjectHandle copy = document.copyForeignObject(source);
  QPDFObjectHandle from = QPDFObjectHandle(copy).getDict();
  form.replaceStreamData(QPDFObjectHandle(copy).getRawStreamData(), from.getKey("/Filter"),
                         from.getKey("/DecodeParms"));
  for (const char* const key : {"/BBox", "/Resources", "/Group"}) form.getDict().replaceKey(key, from.getKey(key));
}

}  // namespace

PDFTextForms::Form PDFTextForms::add(const PDFText& text) {
  if (last_ == text) return forms_.back();
  const PDFTextExtent extent = typesetter_.add(text);
  forms_.push_back({emptyForm(document_, text), extent});
  last_ = text;
  return forms_.back();
}

void PDFTextForms::finish() {
  if (forms_.empty()) return;
  QPDF texts;
  texts.setSuppressWarnings(true);
  texts.setImmediateCopyFrom(true);
  texts.processInputSource(std::make_shared<BufferInputSource>("text", typesetter_.finish()));
  const std::vector<QPDFObjectHandle>& pages = texts.getAllPages();
  for (std::size_t i = 0; i < forms_.size(); ++i) {
    const QPDFObjectHandle::Rectangle box = QPDFObjectHandle(pages.at(i)).getKey("/MediaBox").getArrayAsRectangle();
    fill(document_, forms_[i].object, formOfPage(texts, pages.at(i), {box.llx, box.lly, box.urx, box.ury}));
  }
}

}  // namespace quirn::platform
