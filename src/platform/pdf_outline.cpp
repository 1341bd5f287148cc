// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <map>
#include <optional>
#include <set>

#include "platform/pdf_destination.h"
#include "platform/pdf_document.h"
#include "platform/pdf_internal.h"

namespace quirn::platform {
namespace {

using PageNumbers = std::map<QPDFObjGen, std::size_t>;

std::optional<std::size_t> pageOf(QPDFObjectHandle destination, const PageNumbers& numbers) {
  if (!destination.isArray()) return std::nullopt;
  QPDFObjectHandle page = destination.getArrayItem(0);
  // Some writers number the page, as is right for another file.
  if (long long number = 0; page.getValueAsInt(number)) {
    return number >= 0 && std::cmp_less(number, numbers.size()) ? std::optional(static_cast<std::size_t>(number))
                                                                : std::nullopt;
  }
  const auto found = numbers.find(page.getObjGen());
  return found == numbers.end() ? std::nullopt : std::optional(found->second);
}

QPDFObjectHandle item(const PDFBookmark& bookmark, QPDFObjectHandle page, double top) {
  QPDFObjectHandle destination = QPDFObjectHandle::newArray();
  destination.appendItem(page);
  destination.appendItem(QPDFObjectHandle::newName("/XYZ"));
  destination.appendItem(QPDFObjectHandle::newInteger(0));
  destination.appendItem(QPDFObjectHandle::newReal(top, 4));
  destination.appendItem(QPDFObjectHandle::newNull());
  QPDFObjectHandle dictionary = QPDFObjectHandle::newDictionary();
  dictionary.replaceKey("/Title", QPDFObjectHandle::newUnicodeString(bookmark.label));
  dictionary.replaceKey("/Dest", destination);
  return dictionary;
}

void chain(QPDFObjectHandle root, std::vector<QPDFObjectHandle>& items) {
  for (std::size_t i = 0; i < items.size(); ++i) {
    items[i].replaceKey("/Parent", root);
    if (i > 0) items[i].replaceKey("/Prev", items[i - 1]);
    if (i + 1 < items.size()) items[i].replaceKey("/Next", items[i + 1]);
  }
  root.replaceKey("/First", items.front());
  root.replaceKey("/Last", items.back());
  root.replaceKey("/Count", QPDFObjectHandle::newInteger(std::ssize(items)));
}

}  // namespace

std::vector<PDFBookmark> PDFDocument::bookmarks() const {
  std::vector<PDFBookmark> bookmarks;
  if (isLocked()) return bookmarks;
  internals_->guarded(PDFError::Kind::unreadable, [&] {
    QPDF& qpdf = *internals_->qpdf;
    PageNumbers numbers;
    for (std::size_t i = 0; i < pageCount(); ++i) numbers.emplace(internals_->pages[i].getObjGen(), i);
    std::set<QPDFObjGen> seen;
    std::vector<QPDFObjectHandle> waiting{qpdf.getRoot().getKey("/Outlines").getKeyIfDict("/First")};
    while (!waiting.empty()) {
      QPDFObjectHandle node = waiting.back();
      waiting.pop_back();
      if (!node.isDictionary() || (node.isIndirect() && !seen.insert(node.getObjGen()).second)) continue;
      QPDFObjectHandle title = node.getKeyIfDict("/Title");
      const std::string label = title.isString() ? title.getUTF8Value() : std::string();
      const auto page = pageOf(destinationOf(qpdf, node), numbers);
      if (!label.empty() && page) bookmarks.push_back({label, *page});
      waiting.push_back(node.getKeyIfDict("/Next"));
      waiting.push_back(node.getKeyIfDict("/First"));
    }
  });
  return bookmarks;
}

void PDFDocument::setBookmarks(const std::vector<PDFBookmark>& bookmarks) {
  internals_->guarded(PDFError::Kind::unreadable, [&] {
    QPDFObjectHandle catalog = internals_->qpdf->getRoot();
    catalog.removeKey("/Outlines");
    if (bookmarks.empty()) {
      if (catalog.getKey("/PageMode").isNameAndEquals("/UseOutlines")) catalog.removeKey("/PageMode");
      return;
    }
    std::vector<QPDFObjectHandle> items;
    for (const PDFBookmark& bookmark : bookmarks) {
      const double top = box(bookmark.page, PDFBox::media).height();
      items.push_back(internals_->qpdf->makeIndirectObject(item(bookmark, internals_->pages.at(bookmark.page), top)));
    }
    QPDFObjectHandle root = QPDFObjectHandle::newDictionary();
    root.replaceKey("/Type", QPDFObjectHandle::newName("/Outlines"));
    root = internals_->qpdf->makeIndirectObject(root);
    chain(root, items);
    catalog.replaceKey("/Outlines", root);
  });
}

}  // namespace quirn::platform
