// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The layers ("optional content", ISO 32000-2, 8.11) of a new document: those that the pages it gets refer to, on or
// off as they were.

#pragma once

#include <string>

#include "platform/pdf_library.h"
#include "platform/pdf_object_copier.h"

namespace quirn::platform {

class PDFLayers {
 public:
  // Adds the layers of `qpdf` that the copier has taken over.
  void add(QPDF& qpdf, PDFObjectCopier& copier);

  // The text of the optional content properties; empty if there are no layers.
  std::string text() const;

 private:
  std::string all_;  // references, as all of these
  std::string off_;
  std::string locked_;
  std::string order_;
  std::string exclusive_;  // arrays of layers of which one is on
  std::string usage_;      // when printing or export decide
};

}  // namespace quirn::platform
