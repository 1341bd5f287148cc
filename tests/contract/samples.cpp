// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "contract/samples.h"

#include <algorithm>

#include "archive/archive_builders.h"
#include "support/pdf_builder.h"

namespace quirn::tests {
namespace {

const std::vector<Sample>& samples() {
  static const std::vector<Sample> all{
      {.operationID = "text.hash-files",
       .files = {{"photo.jpg", "not really a photo"}, {"notes", "a file without an extension"}}},
      // RFC 1321, A.5: MD5 of "abc" and of nothing.
      {.operationID = "text.verify-checksums",
       .files = {{"list.md5",
                  "900150983cd24fb0d6963f7d28e17f72  abc.txt\n"
                  "MD5 (empty.txt) = d41d8cd98f00b204e9800998ecf8427e\n"
                  "d41d8cd98f00b204e9800998ecf8427e  gone.txt\n"},
                 {"abc.txt", "abc", false},
                 {"empty.txt", "", false}}},
      {.operationID = "pdf.merge", .files = {{"first.pdf", pdfOfPages(2)}, {"second.pdf", pdfOfPages(1)}}},
      {.operationID = "pdf.split", .files = {{"report.pdf", pdfOfPages(3)}}, .settings = {{"rangeText", "1-2, 3"}}},
      {.operationID = "pdf.metadata", .files = {{"report.pdf", pdfOfPages(1)}}},
      {.operationID = "pdf.bookmarks", .files = {{"report.pdf", pdfOfPages(2)}}, .settings = {{"entries", "2 End"}}},
      {.operationID = "pdf.encrypt",
       .files = {{"report.pdf", pdfOfPages(1)}},
       .settings = {{"password", "open sesame"}},
       .isDeterministic = false},
      {.operationID = "pdf.unlock", .files = {{"report.pdf", pdfOfPages(1)}}},
      {.operationID = "pdf.delete-annotations", .files = {{"report.pdf", pdfOfPages(1)}}},
      {.operationID = "pdf.compress", .files = {{"report.pdf", pdfOfPages(2)}}},
      {.operationID = "pdf.repair", .files = {{"report.pdf", pdfOfPages(2)}}},
      {.operationID = "pdf.flatten",
       .files = {{"report.pdf", pdfOfPages(1, "Page", "/Annots [<< /Subtype /Square /Rect [9 9 99 99] >>]")}}},
      {.operationID = "pdf.nup", .files = {{"report.pdf", pdfOfPages(3)}}, .settings = {{"mode", "booklet"}}},
      {.operationID = "pdf.page-numbers", .files = {{"report.pdf", pdfOfPages(2)}}, .settings = {{"format", "bates"}}},
      {.operationID = "pdf.watermark", .files = {{"report.pdf", pdfOfPages(2)}}, .settings = {{"opacity", "0.5"}}},
      {.operationID = "pdf.crop", .files = {{"report.pdf", pdfOfPages(1)}}, .settings = {{"top", "12.5"}}},
      {.operationID = "pdf.resize-paper", .files = {{"report.pdf", pdfOfPages(1)}}, .settings = {{"paper", "a5"}}},
      {.operationID = "stub.identity", .files = {{"archive.tar.gz", std::string("\x1F\x8B\0\xFF and more", 13)}}},
      {.operationID = "archive.zip-create",
       .files = {{"notes.txt", "some notes"}, {"empty", ""}},
       .passesOverUnreadable = true},
      {.operationID = "archive.zip-extract",
       .files = {{"files.zip", zipOf({{.name = "folder/", .data = ""}, {.name = "folder/a.txt"}, {}})}}},
      {.operationID = "archive.zip-inspect", .files = {{"files.zip", zipOf({{}, {.name = "b"}})}}},
      {.operationID = "archive.tar-create", .files = {{"notes.txt", "some notes"}, {"empty", ""}}},
      {.operationID = "archive.tar-extract",
       .files = {{"files.tar", tarOf({{.name = "folder/a.txt"}, {.name = "b", .data = run(700, 'b')}})}}},
      {.operationID = "archive.gzip", .files = {{"notes.txt", "some notes"}, {"empty", ""}}},
      {.operationID = "archive.encrypt",
       .files = {{"notes.txt", "some notes"}, {"empty", ""}},
       .settings = {{"password", "secret"}},
       .isDeterministic = false,
       .passesOverUnreadable = true},
  };
  return all;
}

}  // namespace

const Sample* sampleFor(std::string_view operationID) {
  const auto found = std::ranges::find(samples(), operationID, &Sample::operationID);
  return found == samples().end() ? nullptr : &*found;
}

}  // namespace quirn::tests
