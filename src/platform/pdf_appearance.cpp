// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_appearance.h"

#include "platform/pdf_page_content.h"

namespace quirn::platform {

using Object = QPDFObjectHandle;

PDFAppearances::PDFAppearances(QPDF& document)
    : document_(document), form_(document.getRoot().getKey("/AcroForm")), texts_(document) {}

bool PDFAppearances::mustBeBuilt(Object annotation) const {
  bool isNeeded = false;
  if (Object(form_).isDictionary()) Object(form_).getKey("/NeedAppearances").getValueAsBool(isNeeded);
  return isNeeded && annotation.getKey("/Subtype").isNameAndEquals("/Widget");
}

Object PDFAppearances::asForm(Object appearance, Object annotation) {
  Object form = appearance.copyStream();
  Object dictionary = form.getDict();
  dictionary.replaceKey("/Type", Object::newName("/XObject"));
  dictionary.replaceKey("/Subtype", Object::newName("/Form"));
  Object layer = annotation.getKey("/OC");
  if (layer.isDictionary()) dictionary.replaceKey("/OC", layer);
  if (!dictionary.getKey("/Resources").isDictionary() && form_.isDictionary())
    dictionary.replaceKey("/Resources", form_.getKey("/DR"));
  return form;
}

std::optional<Object> PDFAppearances::build(Object, const PDFRectangle&) {
  return std::nullopt;
}

}  // namespace quirn::platform
