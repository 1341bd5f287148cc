// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Texts as forms of a document, for the sources of platform/ alone.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/pdf_library.h"
#include "platform/pdf_text.h"

namespace quirn::platform {

class PDFTextForms {
 public:
  // The document outlives the object.
  explicit PDFTextForms(QPDF& document) : document_(document) {}

  struct Form {
    QPDFObjectHandle object;  // the lower left corner of the text's box is at the origin
    PDFTextExtent extent;
  };
  // May be drawn from now on, though there is nothing in it before finish(). Texts that follow one another and are
  // equal share a form.
  Form add(const PDFText& text);
  PDFTextExtent measure(const PDFText& text) const { return typesetter_.measure(text); }

  // Fills all forms; the last call.
  void finish();

 private:
  QPDF& document_;
  PDFTypesetter typesetter_;
  std::vector<Form> forms_;
  std::optional<PDFText> last_;
};

}  // namespace quirn::platform
