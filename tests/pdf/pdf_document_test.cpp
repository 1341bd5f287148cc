// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_document.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include "platform/file_descriptor.h"
#include "platform/pdf_assembly.h"
#include "platform/pdf_screen_image.h"
#include "support/pdf_builder.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;
using platform::PDFDocument;
using platform::PDFError;

PDFDocument opened(const fs::path& file) {
  return PDFDocument(platform::ReadableFile::open(file));
}

platform::FileDescriptor output(const TemporaryFolder& folder) {
  return platform::FileDescriptor(::open((folder / "out.pdf").c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
}

PDFError::Kind kindOf(const std::function<void()>& work) {
  try {
    work();
  } catch (const PDFError& error) {
    return error.kind();
  }
  throw std::logic_error("no error");
}

// The library would repair what is left into a document with fewer pages.
TEST(PDFDocument, TakesAFileThatIsCutWhileItIsReadForAFailingDisk) {
  const TemporaryFolder folder;
  const std::vector<std::function<void(const PDFDocument&, int)>> writers{
      [](const PDFDocument& document, int out) { document.write(out); },
      [](const PDFDocument& document, int out) { document.writeProtected(out, "x"); },
      [](const PDFDocument& document, int out) {
        platform::PDFAssembly(out).append(document, 0, document.pageCount(), {});
      }};
  for (const auto& write : writers) {
    const fs::path file = folder.file("x.pdf", pdfOfPages(2'000));
    const PDFDocument document = opened(file);
    fs::resize_file(file, 30'000);
    EXPECT_EQ(kindOf([&] { write(document, output(folder).number()); }), PDFError::Kind::readFailed);
  }
}

TEST(PDFDocument, SaysWhichFileSystemFailed) {
  const TemporaryFolder folder;
  const PDFDocument document = opened(folder.file("x.pdf", pdfOfPages(1)));
  const platform::FileDescriptor full(::open("/dev/full", O_WRONLY | O_CLOEXEC));
  EXPECT_EQ(kindOf([&] { document.write(full.number()); }), PDFError::Kind::writeFailed);
}

// A few bytes that expand to more than any honest table of objects.
TEST(PDFDocument, RefusesTablesThatExpandWithoutEnd) {
  const TemporaryFolder folder;
  PDFBuilder pdf;
  const int catalog = pdf.reserve();
  const int blanks = pdf.addStream("/Filter /FlateDecode", platform::deflated(std::string(std::size_t{32} << 20, ' ')));
  pdf.set(catalog,
          fmt::format("<< /Type /Catalog /Pages << /Type /Pages /Kids [] /Count 0 >> /Metadata {} 0 R >>", blanks));
  PDFDocument document = opened(folder.file("x.pdf", pdf.file(catalog)));
  EXPECT_EQ(kindOf([&] { document.setAttributes({}); }), PDFError::Kind::tooLarge);
}

TEST(PDFDocument, KnowsBoxesAndRotations) {
  struct Row {
    std::string entries;
    std::string crop;
    int rotation;
  };
  const std::vector<Row> rows{
      {"", "0 0 595 842", 0},
      {"/MediaBox [100 200 -50 20]", "-50 20 100 200", 0},
      {"/CropBox [10 20 9999 30]", "10 20 595 30", 0},
      {"/CropBox [900 900 950 950]", "0 0 595 842", 0},
      {"/CropBox [1 2 3] /Rotate -90", "0 0 595 842", 270},
      {"/MediaBox [0 0 0 0] /Rotate 450", "0 0 612 792", 90},
      {"/MediaBox (no box) /Rotate 45", "0 0 612 792", 0},
  };
  for (const Row& row : rows) {
    const TemporaryFolder folder;
    const PDFDocument document = opened(folder.file("x.pdf", pdfOfPages(1, "word", row.entries)));
    const platform::PDFRectangle box = document.box(0, platform::PDFBox::crop);
    EXPECT_EQ(fmt::format("{} {} {} {}", box.left, box.bottom, box.right, box.top), row.crop) << row.entries;
    EXPECT_EQ(document.rotation(0), row.rotation) << row.entries;
  }
}

}  // namespace
}  // namespace quirn::tests
