// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The tree of a document's pages (ISO 32000-2, 7.7.3), for the sources of platform/ alone.

#pragma once

#include <unordered_set>
#include <vector>

#include "platform/pdf_library.h"
#include "platform/pdf_raw_objects.h"

namespace quirn::platform {

struct PDFPageTree {
  // In order, each an object of its own. A page that is listed twice is two pages, as readers show it.
  std::vector<QPDFObjectHandle> pages;
  std::unordered_set<int> numbers;  // of the pages, and of the nodes above them
  // Whether the file has the tree as the standard does. Otherwise the pages were set right in memory, so that each has
  // its place in the tree and inherits from there, as readers show it; the nodes above them weren't.
  bool isSound = true;
};

// Follows no node twice, and goes 100 levels deep; throws PDFError for a tree that is deeper. Without `raw` every page
// is read; with it only those that look odd.
PDFPageTree readPageTree(QPDF& qpdf, PDFRawObjects* raw);

// Makes a tree of one level of the pages that they are from now on, and gives its root, which is for the catalog. What
// they inherited becomes their own.
QPDFObjectHandle newPageTree(QPDF& qpdf, const std::vector<QPDFObjectHandle>& pages);

}  // namespace quirn::platform
