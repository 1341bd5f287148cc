// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Arbitrary bytes opened as a PDF. What opens is read, changed, written, and taken over into a new document, which must
// open and hold as many pages.

#include <sys/mman.h>

#include <cstdint>
#include <cstdlib>
#include <span>

#include "platform/file_descriptor.h"
#include "platform/pdf_assembly.h"
#include "platform/pdf_canvas.h"
#include "platform/pdf_compression.h"
#include "platform/pdf_document.h"
#include "platform/pdf_flatten.h"

namespace {

using namespace quirn::platform;

FileDescriptor memory() {
  return FileDescriptor(::memfd_create("pdf", MFD_CLOEXEC));
}

void require(bool holds) {
  if (!holds) std::abort();
}

void readAll(const PDFDocument& document) {
  document.attributes();
  document.bookmarks();
  for (std::size_t page = 0; page < document.pageCount(); ++page) {
    const PDFRectangle box = document.box(page, PDFBox::crop);
    require(box.width() > 0 && box.height() > 0);
    require(document.rotation(page) % 90 == 0);
  }
}

void rebuild(const PDFDocument& document) {
  FileDescriptor output = memory();
  std::size_t arrived = 0;
  try {
    PDFAssembly assembly(output.number());
    arrived = assembly.append(document, 0, document.pageCount(), {});
    arrived += assembly.append(document, 0, document.pageCount(), {});
    assembly.finish();
  } catch (const PDFError&) {
    return;
  }
  require(PDFDocument(ReadableFile::of(std::move(output))).pageCount() == arrived);
}

void change(PDFDocument& document) {
  document.setAttributes({.title = "title", .author = {}, .subject = {}, .keywords = {"a", "b"}});
  document.setBookmarks({{.label = "first", .page = 0}});
  document.removeAnnotations();
  const FileDescriptor output = memory();
  document.write(output.number());
}

// All pages anew, as a repair has them, and two to a sheet.
void draw(PDFDocument& document) {
  flattenAnnotations(document, {});
  compressForScreen(document, {});
  const std::size_t count = document.pageCount();
  PDFCanvas canvas(document);
  for (std::size_t page = 0; page < count; ++page) {
    const PDFRectangle mediaBox = document.box(page, PDFBox::media);
    canvas.beginPage({.mediaBox = mediaBox});
    canvas.drawPage(page, mediaBox, {});
    canvas.drawPageInto(page, {16, 16, 391, 596});
    canvas.endPage();
  }
  canvas.close();
  require(document.pageCount() == count);
  const FileDescriptor output = memory();
  writeCompressed(document, output.number());
}

PDFDocument documentOf(std::span<const std::uint8_t> bytes) {
  FileDescriptor input = memory();
  writeAll(input.number(), std::as_bytes(bytes));
  return PDFDocument(ReadableFile::of(std::move(input)));
}

}  // namespace

// It keeps its patterns as offsets, which the search for leaks doesn't follow.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:libfontconfig";
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    PDFDocument document = documentOf({data, size});
    if (document.pageCount() == 0 || document.pageCount() > 1000) return 0;
    readAll(document);
    rebuild(document);
    document.writeProtected(memory().number(), "password");
    change(document);
    PDFDocument other = documentOf({data, size});
    draw(other);
  } catch (const PDFError&) {
    return 0;
  }
  return 0;
}
