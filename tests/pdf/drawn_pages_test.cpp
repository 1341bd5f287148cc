// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Pages that are drawn anew or marked, as independent programs find them.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pdf/pdf_runs.h"
#include "support/pdf_builder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

// The pages as pictures, one behind the other.
std::string picturesOf(const fs::path& file) {
  return printed("pdftoppm", {"-r", "40", "-cropbox", file.string()});
}

// "w x h" of the boxes of all pages, as pdfinfo has them.
std::string sizesOf(const fs::path& file) {
  std::string sizes;
  std::istringstream lines(printed("pdfinfo", {"-f", "1", "-l", "99", file.string()}));
  for (std::string line; std::getline(lines, line);) {
    const std::size_t at = line.find("size:");
    if (line.starts_with("Page ") && line.find("File") == std::string::npos && at != std::string::npos)
      sizes += line.substr(line.find_first_not_of(' ', at + 5)) + "; ";
  }
  return sizes;
}

struct Row {
  const char* sentence;
  const char* operationID;
  Settings settings;
  int pages;
  const char* output;
  const char* words;
};

const Row rows[] = {
    {"two pages to a sheet", "pdf.nup", {}, 3, "report (nup).pdf", "Page 1 Page 2 |Page 3 |"},
    {"the last of four stands alone",
     "pdf.nup",
     {{"mode", "fourUp"}},
     5,
     "report (nup).pdf",
     "Page 1 Page 2 Page 3 Page 4 |Page 5 |"},
    {"a booklet in the order for folding",
     "pdf.nup",
     {{"mode", "booklet"}},
     5,
     "report (nup).pdf",
     "Page 1 |Page 2 |Page 3 |Page 4 Page 5 |"},
    {"a booklet of one page has an empty back", "pdf.nup", {{"mode", "booklet"}}, 1, "report (nup).pdf", "Page 1 ||"},
    {"numbers from fifteen",
     "pdf.page-numbers",
     {{"start", "15"}},
     3,
     "report (numbered).pdf",
     "Page 1 15 / 17 |Page 2 16 / 17 |Page 3 17 / 17 |"},
    {"plain numbers", "pdf.page-numbers", {{"format", "plain"}}, 1, "report (numbered).pdf", "Page 1 1 |"},
    {"numbers with a word", "pdf.page-numbers", {{"format", "page"}}, 1, "report (numbered).pdf", "Page 1 Page 1 |"},
    {"Bates numbers have six digits",
     "pdf.page-numbers",
     {{"format", "bates"}},
     1,
     "report (numbered).pdf",
     "Page 1 DOC000001 |"},
    {"or more",
     "pdf.page-numbers",
     {{"format", "bates"}, {"start", "1234567"}, {"batesPrefix", "© "}},
     1,
     "report (numbered).pdf",
     "Page 1 © 1234567 |"},
    {"a watermark loses the blanks around it",
     "pdf.watermark",
     {{"text", "  Größe \t"}},
     2,
     "report (watermarked).pdf",
     "Page 1 Größe |Page 2 Größe |"},
    {"a watermark of nothing is refused",
     "pdf.watermark",
     {{"text", " \n "}},
     1,
     "Quirn can't run this on these files. Enter watermark text.",
     nullptr},
    {"margins that leave something",
     "pdf.crop",
     {{"top", "49.9"}, {"bottom", "50"}},
     1,
     "report (cropped).pdf",
     nullptr},
    {"margins that leave nothing are refused",
     "pdf.crop",
     {{"left", "50"}, {"right", "50"}},
     1,
     "Quirn can't run this on these files. Those margins would crop the whole page.",
     nullptr},
    {"other paper", "pdf.resize-paper", {{"paper", "legal"}}, 2, "report (resized).pdf", "Page 1 |Page 2 |"},
    {"a repair of what is whole", "pdf.repair", {}, 2, "report (repaired).pdf", "Page 1 |Page 2 |"},
    {"flattened without anything to flatten", "pdf.flatten", {}, 2, "report (flattened).pdf", "Page 1 |Page 2 |"},
    {"compressed", "pdf.compress", {}, 2, "report (compressed).pdf", "Page 1 |Page 2 |"},
};

TEST(DrawnPages, HaveTheirWordsInTheOrderOfTheSheets) {
  for (const Row& row : rows) {
    const PDFRuns runs;
    const std::string was = pdfOfPages(row.pages);
    const fs::path file = runs.file("report.pdf", was);
    EXPECT_EQ(outcomeOf(runs.run(row.operationID, {file}, row.settings)), row.output) << row.sentence;
    if (!row.words) continue;
    EXPECT_EQ(complaintsAbout(runs / row.output), "") << row.sentence;
    EXPECT_EQ(wordsOf(runs / row.output), row.words) << row.sentence;
  }
}

// Each page with other entries, and all of them marked at corners and edges.
std::string oddPages(const std::vector<std::string>& entries) {
  PDFBuilder pdf;
  const int catalog = pdf.reserve();
  const int pages = pdf.reserve();
  std::string kids;
  for (const std::string& more : entries) {
    const int content =
        pdf.addStream("", "1 0 0 rg 40 40 60 30 re f 0 0 1 rg 200 300 90 40 re f 0 0 0 RG 5 w 30 30 500 700 re S");
    const int page = pdf.add(
        fmt::format("<< /Type /Page /Parent {} 0 R /Contents {} 0 R /Resources << >> {} >>", pages, content, more));
    kids += fmt::format("{} 0 R ", page);
  }
  pdf.set(catalog, fmt::format("<< /Type /Catalog /Pages {} 0 R >>", pages));
  pdf.set(pages, fmt::format("<< /Type /Pages /Count {} /Kids [{}] /MediaBox [0 0 600 800] >>", entries.size(), kids));
  return pdf.file(catalog);
}

const std::vector<std::string> oddEntries{"",
                                          "/Rotate 90",
                                          "/Rotate -90",
                                          "/Rotate 180",
                                          "/MediaBox [-50 -20 400 500]",
                                          "/CropBox [20 30 300 400]",
                                          "/CropBox [20 30 300 400] /Rotate 270",
                                          "/UserUnit 1.5"};

TEST(DrawnPages, LookTheSameAfterARepair) {
  const PDFRuns runs;
  const fs::path file = runs.file("odd.pdf", oddPages(oddEntries));
  ASSERT_EQ(outcomeOf(runs.run("pdf.repair", {file})), "odd (repaired).pdf");
  EXPECT_EQ(complaintsAbout(runs / "odd (repaired).pdf"), "");
  EXPECT_EQ(sizesOf(runs / "odd (repaired).pdf"), sizesOf(file));
  EXPECT_TRUE(picturesOf(runs / "odd (repaired).pdf") == picturesOf(file));
}

struct SizeRow {
  const char* sentence;
  const char* operationID;
  Settings settings;
  std::string page;
  const char* output;
  const char* sizes;
};

const SizeRow sizeRows[] = {
    {"two to a sheet lie on their side", "pdf.nup", {}, "", "odd (nup).pdf", "800 x 600 pts; "},
    {"four to a sheet stand",
     "pdf.nup",
     {{"mode", "fourUp"}},
     "/MediaBox [0 0 900 300]",
     "odd (nup).pdf",
     "300 x 900 pts; "},
    {"the sheet is as large as the visible page",
     "pdf.nup",
     {},
     "/CropBox [100 100 400 300]",
     "odd (nup).pdf",
     "300 x 200 pts; "},
    {"paper as the first page lies",
     "pdf.resize-paper",
     {},
     "/MediaBox [0 0 900 300]",
     "odd (resized).pdf",
     "841.8 x 595.2 pts; "},
    {"paper as the first page is seen",
     "pdf.resize-paper",
     {},
     "/Rotate 90",
     "odd (resized).pdf",
     "841.8 x 595.2 pts; "},
    {"paper as it is asked for",
     "pdf.resize-paper",
     {{"orientation", "portrait"}, {"paper", "a5"}},
     "/MediaBox [0 0 900 300]",
     "odd (resized).pdf",
     "419.5 x 595.2 pts; "},
};

TEST(DrawnPages, HaveTheSizeOfTheirPaper) {
  for (const SizeRow& row : sizeRows) {
    const PDFRuns runs;
    const fs::path file = runs.file("odd.pdf", oddPages({row.page}));
    ASSERT_EQ(outcomeOf(runs.run(row.operationID, {file}, row.settings)), row.output) << row.sentence;
    EXPECT_THAT(sizesOf(runs / row.output), testing::StartsWith(std::string(row.sizes).substr(0, 9))) << row.sentence;
  }
}

// Of the page as it is shown: left, bottom, right and top of what is not cut off.
TEST(DrawnPages, AreCroppedAtTheEdgesThatAReaderSees) {
  const PDFRuns runs;
  const fs::path file = runs.file("odd.pdf", oddPages({"", "/Rotate 90"}));
  runs.run("pdf.crop", {file}, {{"top", "25"}});
  const std::string boxes = printed("pdfinfo", {"-box", "-f", "1", "-l", "2", (runs / "odd (cropped).pdf").string()});
  EXPECT_THAT(boxes, testing::ContainsRegex("1 CropBox: +0.00 +0.00 +600.00 +600.00"));
  // Turned clockwise, the left edge is on top.
  EXPECT_THAT(boxes, testing::ContainsRegex("2 CropBox: +150.00 +0.00 +600.00 +800.00"));
}

struct BrokenRow {
  const char* sentence;
  std::string content;
};

const BrokenRow brokenRows[] = {
    {"content that leaves its scale behind", "0.1 0 0 0.1 0 0 cm q q"},
    {"content that restores what it hasn't saved", "Q Q Q 0.1 0 0 0.1 500 500 cm"},
    {"content that breaks off in a string", "BT (never ended"},
    {"content that breaks off in an inline image", "BI /W 9 ID abc"},
};

// The number is read at the place where it is on a page without other content.
TEST(DrawnPages, AreNumberedInPlaceWhateverTheirContentLeavesBehind) {
  const auto placeOfNumber = [](const std::string& content) {
    const PDFRuns runs;
    PDFBuilder pdf;
    const int catalog = pdf.reserve();
    const int pages = pdf.reserve();
    const int stream = pdf.addStream("", content);
    const int page = pdf.add(
        fmt::format("<< /Type /Page /Parent {} 0 R /Contents {} 0 R /MediaBox [0 0 600 800] >>", pages, stream));
    pdf.set(catalog, fmt::format("<< /Type /Catalog /Pages {} 0 R >>", pages));
    pdf.set(pages, fmt::format("<< /Type /Pages /Count 1 /Kids [{} 0 R] >>", page));
    runs.run("pdf.page-numbers", {runs.file("odd.pdf", pdf.file(catalog))}, {{"format", "plain"}});
    const std::string words = printed("pdftotext", {"-bbox", (runs / "odd (numbered).pdf").string(), "-"});
    const std::size_t at = words.find("<word");
    return at == std::string::npos ? words : words.substr(at, words.find('\n', at) - at);
  };
  const std::string right = placeOfNumber("");
  EXPECT_THAT(right, HasSubstr(">1</word>"));
  for (const BrokenRow& row : brokenRows) EXPECT_EQ(placeOfNumber(row.content), right) << row.sentence;
}

struct DamageRow {
  const char* sentence;
  std::string (*damage)(std::string file);
};

const DamageRow damageRows[] = {
    {"no table of its objects",
     [](std::string file) { return file.substr(0, file.find("xref")) + "trailer << /Root 1 0 R >>"; }},
    {"a wrong place of the table",
     [](std::string file) { return file.replace(file.find("startxref") + 10, 3, "999"); }},
    {"no table and no catalog",
     [](std::string file) { return file.substr(file.find("2 0 obj"), file.find("xref") - file.find("2 0 obj")); }},
    {"bytes before its beginning", [](std::string file) { return "mail header\r\n\r\n" + file; }},
    {"a wrong length of a stream", [](std::string file) { return file.replace(file.find("/Length ") + 8, 2, "99"); }},
};

TEST(DrawnPages, AreFoundInDamagedFiles) {
  for (const DamageRow& row : damageRows) {
    const PDFRuns runs;
    const fs::path file = runs.file("bad.pdf", row.damage(pdfOfPages(2)));
    EXPECT_EQ(outcomeOf(runs.run("pdf.repair", {file})), "bad (repaired).pdf") << row.sentence;
    EXPECT_EQ(wordsOf(runs / "bad (repaired).pdf"), "Page 1 |Page 2 |") << row.sentence;
    EXPECT_EQ(complaintsAbout(runs / "bad (repaired).pdf"), "") << row.sentence;
  }
}

}  // namespace
}  // namespace quirn::tests
