// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Appearances of annotations, for the sources of platform/ alone: their own as forms that a page can draw, and new ones
// where they have none.

#pragma once

#include <optional>

#include "platform/pdf_geometry.h"
#include "platform/pdf_library.h"
#include "platform/pdf_text_forms.h"

namespace quirn::platform {

class PDFAppearances {
 public:
  // The document outlives the object.
  explicit PDFAppearances(QPDF& document);

  // The form may ask for fields to be drawn from their values whatever they look like.
  bool mustBeBuilt(QPDFObjectHandle annotation) const;

  // An annotation's own appearance as a form, shown when the annotation's layer is.
  QPDFObjectHandle asForm(QPDFObjectHandle appearance, QPDFObjectHandle annotation);

  // A form in the page's plane, or nothing where the annotation shows nothing.
  std::optional<QPDFObjectHandle> build(QPDFObjectHandle annotation, const PDFRectangle& rectangle);

  // Completes what was built; the last call.
  void finish() { texts_.finish(); }

 private:
  QPDF& document_;
  QPDFObjectHandle form_;  // the document's /AcroForm, if any
  PDFTextForms texts_;
};

}  // namespace quirn::platform
