// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_appearance.h"

#include "platform/pdf_drawing.h"
#include "platform/pdf_field.h"
#include "platform/pdf_field_appearance.h"
#include "platform/pdf_markup_appearance.h"
#include "platform/pdf_page_content.h"

namespace quirn::platform {

using Object = QPDFObjectHandle;

namespace {

// A form is shown when its layer is.
Object putOnLayer(Object form, Object annotation) {
  Object layer = annotation.getKey("/OC");
  if (layer.isDictionary()) form.getDict().replaceKey("/OC", layer);
  return form;
}

}  // namespace

PDFAppearances::PDFAppearances(QPDF& document)
    : document_(document), form_(document.getRoot().getKey("/AcroForm")), texts_(document) {}

bool PDFAppearances::mustBeBuilt(Object annotation) const {
  if (!annotation.getKey("/Subtype").isNameAndEquals("/Widget")) return false;
  bool isAsked = false;
  if (Object form = form_; form.isDictionary()) form.getKey("/NeedAppearances").getValueAsBool(isAsked);
  if (!isAsked) return false;
  // Buttons tell apart their states by their appearances alone.
  const PDFField::Kind kind = PDFField(annotation, form_).kind();
  return kind == PDFField::Kind::text || kind == PDFField::Kind::choice;
}

Object PDFAppearances::asForm(Object appearance, Object annotation) {
  Object form = appearance.copyStream();
  Object dictionary = form.getDict();
  dictionary.replaceKey("/Type", Object::newName("/XObject"));
  dictionary.replaceKey("/Subtype", Object::newName("/Form"));
  putOnLayer(form, annotation);
  if (!dictionary.getKey("/Resources").isDictionary() && form_.isDictionary())
    dictionary.replaceKey("/Resources", form_.getKey("/DR"));
  return form;
}

std::optional<Object> PDFAppearances::build(Object annotation, const PDFRectangle& rectangle) {
  PDFDrawing drawing(document_);
  if (!annotation.getKey("/Subtype").isNameAndEquals("/Widget")) {
    const PDFRectangle box = drawMarkup(drawing, texts_, annotation, rectangle);
    return drawing.isEmpty() ? std::nullopt : std::optional(putOnLayer(drawing.finish(box, {}), annotation));
  }
  const PDFField field(annotation, form_);
  long long turn = 0;
  field.characteristic("/R").getValueAsInt(turn);
  // A widget is turned the other way round than a page.
  const PDFPageView view{rectangle, static_cast<int>(turn % 360), 1};
  drawField(drawing, texts_, annotation, field, uprightBox(view));
  if (drawing.isEmpty()) return std::nullopt;
  return putOnLayer(drawing.finish(uprightBox(view), uprightTransform(view)), annotation);
}

}  // namespace quirn::platform
