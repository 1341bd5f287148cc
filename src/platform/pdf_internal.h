// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What is behind a PDFDocument, for the sources of platform/ alone.

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <unordered_set>
#include <vector>

#include "platform/pdf_document.h"
#include "platform/pdf_library.h"
#include "platform/pdf_page_tree.h"
#include "platform/pdf_raw_objects.h"
#include "platform/pdf_source.h"

namespace quirn::platform {

struct PDFDocument::Internals {
  std::shared_ptr<PDFSource> source;  // null for a document that is in memory
  // New for every attempt to open; null while the document is locked.
  std::unique_ptr<QPDF> qpdf;
  std::unique_ptr<PDFRawObjects> raw;   // of a document from a file whose pages are as they stand in it
  std::vector<QPDFObjectHandle> pages;  // in order
  std::unordered_set<int> pageTree;     // the numbers of all pages, and of the nodes above them

  bool isLocked() const { return qpdf == nullptr; }

  // A page that is told by its bytes may still be one that the library can't read. Throws PDFError.
  static void requireReadable(std::span<const QPDFObjectHandle> pages);

  // Looks for the pages, for the first time. A tree that others might stumble over is replaced.
  void findPages();
  // From now on these are the pages, objects of this document that are in no other's tree.
  void setPages(const std::vector<QPDFObjectHandle>& newPages);

  // Sets right what others would complain of: for a document that is to be written, and for pages that are taken over.
  // A page tells whether that changed it.
  void mend();
  bool mendPage(QPDFObjectHandle page) const;

  // Runs `work`, which calls the library, with the library's errors as PDFError of `kind`, or as readFailed if the disk
  // was at fault.
  void guarded(PDFError::Kind kind, const std::function<void()>& work) const;
};

// A page's attribute, its own or the one that it inherits; null if there is none.
QPDFObjectHandle pageAttribute(QPDFObjectHandle page, const std::string& key);

// The rectangle that an array of four numbers says, its corners in order. Nothing for any other object, or for one
// without an area.
std::optional<PDFRectangle> rectangleOf(QPDFObjectHandle object);

}  // namespace quirn::platform
