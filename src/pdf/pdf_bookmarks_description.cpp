// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/accepted_pdfs.h"
#include "pdf/pdf_bookmarks_operation.h"

namespace quirn {

Panel PDFBookmarksConfig::panel() {
  return {list<&PDFBookmarksConfig::entries>("Bookmarks", "New bookmark",
                                             {.empty = "No bookmarks yet — add one below.",
                                              .add = "Add bookmark",
                                              .textKey = "title",
                                              .textLabel = "Title",
                                              .numberKey = "page",
                                              .numberLabel = "p."},
                                             &bookmarkListText, &parseBookmarkList)
              .fromInput(),
          countFact<&PDFBookmarksConfig::pageCount>("page", "pages")};
}

const OperationInfo& PDFBookmarksOperation::info() {
  static const OperationInfo info{
      .operationID = "pdf.bookmarks",
      .displayName = "Edit PDF Bookmarks",
      .iconName = "bookmark",
      .category = OperationCategory::pdf,
      .aliases = {"pdf bookmarks", "outline", "table of contents", "toc"},
      .about = "Changes the bookmarks that lead to a PDF’s pages.",
  };
  return info;
}

const AcceptedInputs& PDFBookmarksOperation::accepts() {
  return onePDF();
}

}  // namespace quirn
