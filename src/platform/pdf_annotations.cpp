// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <set>

#include "platform/pdf_document.h"
#include "platform/pdf_internal.h"

namespace quirn::platform {
namespace {

bool isAnnotation(QPDFObjectHandle object) {
  return object.isDictionary() && object.getKey("/Subtype").isName() && !object.hasKey("/Pages");
}

}  // namespace

void PDFDocument::removeAnnotations() {
  internals_->guarded(PDFError::Kind::unreadable, [&] {
    QPDF& qpdf = *internals_->qpdf;
    std::set<QPDFObjGen> pages;
    for (QPDFObjectHandle page : internals_->pages) pages.insert(page.getObjGen());
    for (QPDFObjectHandle page : internals_->pages) {
      QPDFObjectHandle annotations = page.getKey("/Annots");
      for (int i = 0; annotations.isArray() && i < annotations.getArrayNItems(); ++i) {
        QPDFObjectHandle annotation = annotations.getArrayItem(i);
        if (!annotation.isIndirect() || !isAnnotation(annotation) || pages.contains(annotation.getObjGen())) continue;
        // The structure tree, threads of answers and the form may name it too; to all of them it is gone.
        qpdf.replaceObject(annotation.getObjGen(), QPDFObjectHandle::newNull());
      }
      page.removeKey("/Annots");
    }
    qpdf.getRoot().removeKey("/AcroForm");
  });
}

}  // namespace quirn::platform
