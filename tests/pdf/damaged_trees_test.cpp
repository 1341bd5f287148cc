// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Sound documents out of those whose pages are hard to find.

#include <fmt/format.h>
#include <gtest/gtest.h>

#include "pdf/pdf_runs.h"
#include "support/pdf_builder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

// What is odd about a document of two pages, which say "one" and "two" and are 300 wide; the rest is sound.
// "{0}" and "{1}" are the pages, "{2}" is the tree, "{3}" a page by itself; of a page, "{0}" is its content.
struct OddDocument {
  std::string kids = "{0} 0 R {1} 0 R";
  std::string tree = "/Type /Pages /Count 2";
  std::string page = "/Type /Page /Parent 2 0 R /MediaBox [0 0 300 400]";
  std::string contents = "{0} 0 R";
  std::string catalog = "/Type /Catalog /Pages 2 0 R";
  std::string file() const;
};

std::string OddDocument::file() const {
  PDFBuilder pdf;
  const int catalogNumber = pdf.reserve();
  const int treeNumber = pdf.reserve();
  const auto pageOf = [&](const std::string& word) {
    const int stream = pdf.addStream("", fmt::format("BT /F 24 Tf 72 100 Td ({}) Tj ET", word));
    return fmt::format(
        "<< {} /Contents {} /Resources << /Font << /F << /Type /Font /Subtype /Type1 /BaseFont "
        "/Helvetica >> >> >> >>",
        page, fmt::format(fmt::runtime(contents), stream));
  };
  const int one = pdf.add(pageOf("one"));
  const int two = pdf.add(pageOf("two"));
  const std::string own = pageOf("own");
  pdf.set(treeNumber, fmt::format("<< {} /Kids [{}] >>", tree, fmt::format(fmt::runtime(kids), one, two, 2, own)));
  pdf.set(catalogNumber, fmt::format("<< {} >>", catalog));
  return pdf.file(catalogNumber);
}

std::string without(std::string text, const std::string& part) {
  return text.erase(text.find(part), part.size());
}

struct Row {
  std::string name;
  std::string content;
  std::string words = "one |two |";
  std::string size = "300 x 400 pts";
};

std::vector<Row> rows() {
  return {
      {"nothing odd", OddDocument{}.file()},
      {"a page that is listed twice", OddDocument{.kids = "{0} 0 R {1} 0 R {0} 0 R"}.file(), "one |two |one |"},
      {"kids that are nothing", OddDocument{.kids = "null {0} 0 R 99 0 R 7 (x) {1} 0 R"}.file()},
      {"a tree that holds itself", OddDocument{.kids = "{0} 0 R {2} 0 R {1} 0 R"}.file()},
      {"a page that is no object of its own", OddDocument{.kids = "{3} {1} 0 R"}.file(), "own |two |"},
      {"a catalog among the pages", OddDocument{.kids = "{0} 0 R 1 0 R {1} 0 R"}.file(), "one ||two |"},
      {"a wrong count", OddDocument{.tree = "/Type /Pages /Count 70000"}.file()},
      {"a negative count", OddDocument{.tree = "/Type /Pages /Count -1"}.file()},
      {"no count", OddDocument{.tree = "/Type /Pages"}.file()},
      {"no types", OddDocument{.tree = "/Count 2", .page = "/Parent 2 0 R /MediaBox [0 0 300 400]"}.file()},
      {"no parents, and a size that the tree says",
       OddDocument{.tree = "/Type /Pages /Count 2 /MediaBox [0 0 300 400]", .page = "/Type /Page"}.file()},
      {"wrong parents, and a size that the tree says",
       OddDocument{.tree = "/Type /Pages /Count 2 /MediaBox [0 0 300 400]", .page = "/Type /Page /Parent 1 0 R"}
           .file()},
      {"no size at all", OddDocument{.page = "/Type /Page /Parent 2 0 R"}.file(), "one |two |", "612 x 792 pts"},
      {"a catalog that leads to a page", OddDocument{.catalog = "/Type /Catalog /Pages 4 0 R"}.file()},
      {"content that is partly nothing", OddDocument{.contents = "[null {0} 0 R 99 0 R 1 0 R]"}.file()},
      {"content that is no stream", OddDocument{.contents = "1 0 R"}.file(), "||"},
      {"a catalog that doesn't say that it is one", OddDocument{.catalog = "/Pages 2 0 R"}.file()},
      {"a trailer without a size", without(OddDocument{}.file(), "/Size 8 ")},
  };
}

TEST(DamagedTrees, BecomeSoundHoweverTheDocumentIsWritten) {
  // One for each way in which documents are written.
  const std::vector<std::pair<std::string, Settings>> operations{
      {"pdf.unlock", {}},
      {"pdf.metadata", {{"title", "T"}}},
      {"pdf.encrypt", {{"password", "x"}}},
      {"pdf.compress", {}},
      {"pdf.repair", {}},
  };
  for (const Row& row : rows()) {
    for (const auto& [operationID, settings] : operations) {
      SCOPED_TRACE(row.name + ", " + operationID);
      const PDFRuns runs;
      const Ran ran = runs.run(operationID, {runs.file("odd.pdf", row.content)}, settings);
      ASSERT_TRUE(ran.result) << outcomeOf(ran);
      fs::path output = ran.result->outputs.at(0).url;
      EXPECT_EQ(complaintsAbout(output, "x"), "");
      if (operationID == "pdf.encrypt") {
        const fs::path open = runs / "open.pdf";
        ASSERT_EQ(printed("qpdf", {"--password=x", "--decrypt", output, open}), "");
        output = open;
      }
      EXPECT_EQ(wordsOf(output), row.words);
      EXPECT_NE(printed("pdfinfo", {output}).find(row.size), std::string::npos);
    }
  }
}

// Marks go on each showing of a page once.
TEST(DamagedTrees, HavePagesThatAreListedTwiceChangedOnceEach) {
  const PDFRuns runs;
  const fs::path source = runs.file("odd.pdf", OddDocument{.kids = "{0} 0 R {0} 0 R"}.file());
  runs.run("pdf.page-numbers", {source}, {{"format", "ofTotal"}});
  EXPECT_EQ(wordsOf(runs / "odd (numbered).pdf"), "one 1/2 |one 2/2 |");
  runs.run("pdf.crop", {source}, {{"left", "50"}});
  EXPECT_NE(printed("pdfinfo", {"-box", "-l", "2", runs / "odd (cropped).pdf"})
                .find("2 CropBox:     150.00     0.00   300.00"),
            std::string::npos);
}

}  // namespace
}  // namespace quirn::tests
