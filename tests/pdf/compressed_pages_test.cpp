// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What compression makes of pictures, as pdfimages lists them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "pdf/pdf_runs.h"
#include "support/jpx_picture.h"
#include "support/pdf_builder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

struct Picture {
  std::string entries;  // of the image's dictionary
  std::string bytes;
};

std::string samples(std::size_t count) {
  std::string bytes;
  for (std::size_t i = 0; i < count; ++i) bytes += static_cast<char>((i / 3 + i * i % 23) & 0xFF);
  return bytes;
}

Picture rgb(int width, int height, const std::string& more = "") {
  return {fmt::format("/Width {} /Height {} /BitsPerComponent 8 /ColorSpace /DeviceRGB {}", width, height, more),
          samples(static_cast<std::size_t>(width) * static_cast<std::size_t>(height) * 3)};
}

// A page that draws the pictures as /I0, /I1, …; their entries may name the picture before as BEFORE.
std::string pageOf(const std::vector<Picture>& pictures, const std::string& content, const std::string& more = "") {
  PDFBuilder pdf;
  const int catalog = pdf.reserve();
  const int pages = pdf.reserve();
  std::string names;
  int last = 0;
  for (Picture picture : pictures) {
    const std::size_t before = picture.entries.find("BEFORE");
    if (before != std::string::npos) picture.entries.replace(before, 6, fmt::format("{} 0 R", last));
    last = pdf.addStream("/Type /XObject /Subtype /Image " + picture.entries, picture.bytes);
    names += fmt::format("/I{} {} 0 R ", std::count(names.begin(), names.end(), 'I'), last);
  }
  const int stream = pdf.addStream("", content);
  const int page = pdf.add(fmt::format(
      "<< /Type /Page /Parent {} 0 R /MediaBox [0 0 600 800] /Contents {} 0 R /Resources << /XObject << {} >> "
      ">> {} >>",
      pages, stream, names, more));
  pdf.set(catalog, fmt::format("<< /Type /Catalog /Pages {} 0 R >>", pages));
  pdf.set(pages, fmt::format("<< /Type /Pages /Count 1 /Kids [{} 0 R] >>", page));
  return pdf.file(catalog);
}

// "image 75x75 rgb jpeg" for each use of a picture, in order.
std::string picturesIn(const fs::path& file) {
  std::istringstream lines(printed("pdfimages", {"-list", file.string()}));
  std::string all;
  std::string line;
  for (int header = 0; header < 2; ++header) std::getline(lines, line);
  while (std::getline(lines, line)) {
    std::istringstream words(line);
    std::string page, number, type, width, height, color, components, bits, coding;
    words >> page >> number >> type >> width >> height >> color >> components >> bits >> coding;
    all += fmt::format("{} {}x{} {} {}; ", type, width, height, color, coding);
  }
  return all;
}

struct Row {
  const char* sentence;
  std::vector<Picture> pictures;
  std::string content;
  std::string more;  // of the page
  const char* result;
};

const Picture gray{"/Width 300 /Height 300 /BitsPerComponent 8 /ColorSpace /DeviceGray", samples(90000)};

// 36 points are half an inch: 75 pixels.
const Row rows[] = {
    {"a picture has the pixels that a screen shows",
     {rgb(300, 300)},
     "36 0 0 36 0 0 cm /I0 Do",
     "",
     "image 75x75 rgb jpeg; "},
    {"and no more of them", {rgb(300, 300)}, "36.1 0 0 36.47 0 0 cm /I0 Do", "", "image 75x75 rgb jpeg; "},
    {"one that is turned, too", {rgb(300, 300)}, "0 36 -36 0 0 0 cm /I0 Do", "", "image 75x75 rgb jpeg; "},
    {"scales are taken together",
     {rgb(300, 300)},
     "q .5 0 0 .5 0 0 cm q 72 0 0 72 9 9 cm /I0 Do Q Q",
     "",
     "image 75x75 rgb jpeg; "},
    {"a unit of two points makes it twice as large",
     {rgb(300, 300)},
     "36 0 0 36 0 0 cm /I0 Do",
     "/UserUnit 2",
     "image 150x150 rgb jpeg; "},
    {"the largest place counts",
     {rgb(300, 300)},
     "q 9 0 0 9 0 0 cm /I0 Do Q q 72 0 0 72 0 0 cm /I0 Do Q",
     "",
     "image 150x150 rgb jpeg; image 150x150 rgb jpeg; "},
    {"a picture that is shown large keeps its pixels",
     {rgb(300, 300)},
     "500 0 0 500 0 0 cm /I0 Do",
     "",
     "image 300x300 rgb jpeg; "},
    {"equal pictures become one",
     {rgb(300, 300), rgb(300, 300)},
     "q 36 0 0 36 0 0 cm /I0 Do Q 36 0 0 36 0 0 cm /I1 Do",
     "",
     "image 75x75 rgb jpeg; image 75x75 rgb jpeg; "},
    {"a soft mask has the size of its picture",
     {gray, rgb(300, 300, "/SMask BEFORE")},
     "36 0 0 36 0 0 cm /I1 Do",
     "",
     "image 75x75 rgb jpeg; smask 75x75 gray image; "},
    {"a mask whose colour is mixed in stays",
     {{gray.entries + " /Matte [0 0 0]", gray.bytes}, rgb(300, 300, "/SMask BEFORE")},
     "36 0 0 36 0 0 cm /I1 Do",
     "",
     "image 300x300 rgb image; smask 300x300 gray image; "},
    {"a stencil stays",
     {{"/Width 300 /Height 300 /BitsPerComponent 1 /ImageMask true", samples(11400)}},
     "36 0 0 36 0 0 cm /I0 Do",
     "",
     "stencil 300x300 - image; "},
    {"one bit stays",
     {{"/Width 300 /Height 300 /BitsPerComponent 1 /ColorSpace /DeviceGray", samples(11400)}},
     "36 0 0 36 0 0 cm /I0 Do",
     "",
     "image 300x300 gray image; "},
    {"a colour key stays",
     {rgb(300, 300, "/Mask [0 5 0 5 0 5]")},
     "36 0 0 36 0 0 cm /I0 Do",
     "",
     "image 300x300 rgb image; "},
    {"a picture that claims to be huge stays",
     {{"/Width 60000 /Height 60000 /BitsPerComponent 8 /ColorSpace /DeviceRGB", samples(3000)}},
     "36 0 0 36 0 0 cm /I0 Do",
     "",
     "image 60000x60000 rgb image; "},
};

TEST(CompressedPages, HavePicturesForTheScreen) {
  for (const Row& row : rows) {
    const PDFRuns runs;
    const fs::path file = runs.file("report.pdf", pageOf(row.pictures, row.content, row.more));
    EXPECT_EQ(outcomeOf(runs.run("pdf.compress", {file})), "report (compressed).pdf") << row.sentence;
    EXPECT_EQ(picturesIn(runs / "report (compressed).pdf"), row.result) << row.sentence;
    EXPECT_EQ(complaintsAbout(runs / "report (compressed).pdf"), "") << row.sentence;
  }
}

TEST(CompressedPages, SayNothingOfJPEG2000ThatIsGone) {
  const PDFRuns runs;
  // Behind the picture, a box that holds nothing: smaller ones are left alone.
  const std::string jpx = fourByTwoJPX() + std::string("\0\0\x10\0free", 8) + std::string(0x1000 - 8, '\0');
  const Picture picture{"/Width 4 /Height 2 /Filter /JPXDecode /Decode [1 0 1 0 1 0]", jpx};
  const fs::path file = runs.file("report.pdf", pageOf({picture}, "36 0 0 36 0 0 cm /I0 Do"));
  EXPECT_EQ(outcomeOf(runs.run("pdf.compress", {file})), "report (compressed).pdf");
  const fs::path result = runs / "report (compressed).pdf";
  EXPECT_EQ(picturesIn(result), "image 4x2 rgb jpeg; ");
  EXPECT_THAT(contentOf(result), testing::Not(testing::HasSubstr("/Decode ")));
}

TEST(CompressedPages, KeepTheirProtection) {
  const PDFRuns runs;
  const fs::path file = runs.file("report.pdf", pdfOfPages(1));
  const fs::path locked = runs / "locked.pdf";
  printed("qpdf", {"--encrypt", "", "owner", "256", "--", file.string(), locked.string()});
  EXPECT_EQ(outcomeOf(runs.run("pdf.compress", {locked})), "locked (compressed).pdf");
  EXPECT_EQ(wordsOf(runs / "locked (compressed).pdf"), "Page 1 |");
  EXPECT_THAT(printed("pdfinfo", {(runs / "locked (compressed).pdf").string()}),
              testing::HasSubstr("Encrypted:       yes"));
}

TEST(CompressedPages, AreCountedOverAllFiles) {
  const PDFRuns runs;
  const std::string page = pageOf({rgb(300, 300)}, "36 0 0 36 0 0 cm /I0 Do");
  const Ran ran = runs.run("pdf.compress", {runs.file("a.pdf", page), runs.file("b.pdf", page)});
  EXPECT_EQ(outcomeOf(ran), "a (compressed).pdf, b (compressed).pdf");
  EXPECT_THAT(ran.result->summary.value_or(""),
              testing::MatchesRegex("Compressed 541 KB → [0-9]+ KB \\(9[0-9]% smaller\\)\\."));
}

}  // namespace
}  // namespace quirn::tests
