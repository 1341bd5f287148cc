// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A field of a form as one of its widgets shows it (ISO 32000-1, 12.7), for the sources of platform/ alone.

#pragma once

#include <string>
#include <vector>

#include "platform/pdf_library.h"

namespace quirn::platform {

class PDFField {
 public:
  enum class Kind { text, choice, check, radio, push, other };

  // `form` is the document's /AcroForm, or no dictionary.
  PDFField(QPDFObjectHandle widget, QPDFObjectHandle form);

  Kind kind() const;
  bool isMultiline() const { return has(1 << 12); }
  bool isPassword() const { return has(1 << 13); }
  bool isCombo() const { return has(1 << 17); }
  // How many characters a comb has cells for; 0 for a field that is none.
  int combLength() const;

  // What is shown of a choice's options; in a text field, its value alone. UTF-8.
  std::vector<std::string> shownValues() const;
  // All options of a choice as they are shown.
  std::vector<std::string> options() const;
  // Whether a check box or radio button is on.
  bool isOn() const;

  // The field's own or inherited entry, or the form's default; null where there is none.
  QPDFObjectHandle entry(const std::string& key) const;
  // Of the widget's /MK.
  QPDFObjectHandle characteristic(const std::string& key) const;
  QPDFObjectHandle fonts() const;
  std::string defaultAppearance() const;

 private:
  bool has(long long flag) const { return (flags_ & flag) != 0; }
  std::string shownOption(const std::string& value) const;

  QPDFObjectHandle widget_;
  QPDFObjectHandle form_;
  long long flags_ = 0;
};

}  // namespace quirn::platform
