// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/pdf_bookmarks_operation.h"

#include <fmt/format.h>

#include <algorithm>

#include "pdf/pdf_files.h"
#include "platform/text.h"

namespace quirn {
namespace {

std::vector<platform::PDFBookmark> bookmarksOf(const std::vector<BookmarkEntry>& entries, std::size_t pageCount) {
  std::vector<platform::PDFBookmark> bookmarks;
  const auto last = static_cast<std::int64_t>(pageCount);
  for (const BookmarkEntry& entry : entries) {
    const std::string_view title = platform::trimmed(entry.title);
    if (title.empty() || last == 0) continue;
    const auto page = static_cast<std::size_t>(std::clamp<std::int64_t>(entry.page, 1, last) - 1);
    bookmarks.push_back({.label = std::string(title), .page = page});
  }
  return bookmarks;
}

}  // namespace

PDFBookmarksConfig PDFBookmarksOperation::configurationFor(std::span<const InputFile> inputs,
                                                           OperationContext& context) {
  const platform::PDFDocument document = openPDF(inputs.front(), context);
  PDFBookmarksConfig config;
  config.pageCount = std::max(1, static_cast<int>(document.pageCount()));
  guardedRead(inputs.front(), [&] {
    for (const platform::PDFBookmark& bookmark : document.bookmarks()) {
      config.entries.push_back({.id = platform::Uuid::random(),
                                .title = bookmark.label,
                                .page = static_cast<std::int64_t>(bookmark.page) + 1});
    }
  });
  return config;
}

OperationResult PDFBookmarksOperation::runWith(std::span<const InputFile> inputs, const PDFBookmarksConfig& config,
                                               OperationContext& context) const {
  if (inputs.empty()) throw OperationError::unsupportedInput("Bookmarks needs a single PDF.");
  const InputFile& input = inputs.front();
  platform::PDFDocument document = openUnlockedPDF(input, context);
  guardedRead(input, [&] { document.setBookmarks(bookmarksOf(config.entries, document.pageCount())); });
  OperationResult result;
  result.outputs.push_back(writePDF(document, input, "bookmarks", context));
  const std::size_t count = config.entries.size();
  result.summary = fmt::format("Set {} {}.", count, count == 1 ? "bookmark" : "bookmarks");
  return result;
}

}  // namespace quirn
