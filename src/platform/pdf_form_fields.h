// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The form of a new document, gathered from the forms of those whose pages it gets (ISO 32000-2, 12.7).
//
// A field tree is cut to the fields that are on those pages. A field whose name another document has already used gets
// a name of its own, or the two would show one value. A signature keeps its appearance and no more: it signed another
// file.

#pragma once

#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/pdf_library.h"
#include "platform/pdf_object_copier.h"
#include "platform/pdf_object_writer.h"

namespace quirn::platform {

class PDFFormFields {
 public:
  // Takes over the fields of these widget annotations, which are indirect objects of `qpdf`. Before the copier has met
  // them.
  void add(QPDF& qpdf, const std::vector<QPDFObjectHandle>& widgets, PDFObjectCopier& copier, PDFObjectWriter& writer);

  // The text of the form dictionary; empty if there are no fields.
  std::string text() const;

 private:
  void addDefaults(QPDFObjectHandle form, PDFObjectCopier& copier);
  void completeRoot(QPDFObjectHandle field, QPDFObjectHandle form);
  std::string freeName(const std::string& name);

  std::string roots_;  // references
  std::set<std::string> names_;
  std::string appearance_;                                               // the first default appearance
  std::map<std::string, std::map<std::string, std::string>> resources_;  // of all forms, by kind and name
  bool needsAppearances_ = false;
};

}  // namespace quirn::platform
