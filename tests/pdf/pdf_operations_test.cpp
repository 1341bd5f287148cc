// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The names, sentences and settings of the operations on whole documents.

#include <gtest/gtest.h>

#include "pdf/bookmark_entry.h"
#include "pdf/pdf_bookmarks_operation.h"
#include "pdf/pdf_metadata_operation.h"
#include "pdf/pdf_runs.h"
#include "pdf/pdf_split_operation.h"
#include "support/pdf_builder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

TEST(PDFOperations, NameTheirOutputsAndSayWhatTheyDid) {
  struct Row {
    std::string operationID;
    Settings settings;
    std::string outcome;
    std::string summary;
  };
  const std::string refused = "Quirn can't run this on these files. ";
  const std::vector<Row> rows{
      {"pdf.split",
       {{"pagesPerChunk", "4"}},
       "x (split, pages 1-4).pdf, x (split, pages 5-8).pdf, x (split, page 9).pdf",
       "Split into 3 files."},
      {"pdf.split",
       {{"mode", "ranges"}, {"rangeText", "1-3, 5, 8-10"}},
       "x (split, pages 1-3).pdf, x (split, page 5).pdf, x (split, pages 8-9).pdf",
       "Split into 3 files."},
      {"pdf.split", {{"mode", "ranges"}, {"rangeText", "9"}}, "x (split, page 9).pdf", "Split into 1 file."},
      {"pdf.split", {{"mode", "ranges"}, {"rangeText", "3-1"}}, refused + "No pages matched — check your ranges.", ""},
      {"pdf.metadata", {{"title", "T"}}, "x (metadata).pdf", "Updated metadata for x.pdf."},
      {"pdf.bookmarks", {{"entries", "1 A; 99 B; 3"}}, "x (bookmarks).pdf", "Set 3 bookmarks."},
      {"pdf.bookmarks", {{"entries", "1 A"}}, "x (bookmarks).pdf", "Set 1 bookmark."},
      {"pdf.encrypt", {}, refused + "Enter a password first.", ""},
      {"pdf.encrypt", {{"password", " "}}, "x (protected).pdf", ""},
      {"pdf.unlock", {}, "x (unlocked).pdf", ""},
      {"pdf.delete-annotations", {}, "x (clean).pdf", ""},
  };
  for (const Row& row : rows) {
    const PDFRuns runs;
    const Ran ran = runs.run(row.operationID, {runs.file("x.pdf", pdfOfPages(9))}, row.settings);
    EXPECT_EQ(outcomeOf(ran), row.outcome);
    EXPECT_EQ(ran.result ? ran.result->summary.value_or("") : "", row.summary);
  }
}

TEST(PDFOperations, TreatLockedDocumentsAsEachOfThemMust) {
  const PDFRuns runs;
  const fs::path plain = runs.file("plain.pdf", pdfOfPages(2));
  runs.run("pdf.encrypt", {plain}, {{"password", "pässword"}});
  const fs::path locked = runs / "plain (protected).pdf";
  EXPECT_EQ(complaintsAbout(locked, "pässword"), "");
  EXPECT_EQ(printed("qpdf", {"--show-encryption", "--password=pässword", locked}).substr(0, 5), "R = 6");
  const std::string refused = "Quirn can't run this on these files. ";
  const std::string name = "plain (protected).pdf";
  EXPECT_EQ(outcomeOf(runs.run("pdf.encrypt", {locked}, {{"password", "x"}})),
            refused + name + " is already password-protected.");
  EXPECT_EQ(outcomeOf(runs.run("pdf.unlock", {locked}, {{"password", "x"}})),
            refused + "Wrong password for " + name + ".");
  EXPECT_EQ(outcomeOf(runs.run("pdf.unlock", {locked}, {{"password", "pässword"}})),
            "plain (protected) (unlocked).pdf");
  EXPECT_EQ(wordsOf(runs / "plain (protected) (unlocked).pdf"), wordsOf(plain));
  EXPECT_EQ(outcomeOf(runs.run("pdf.merge", {locked, locked})), "Something went wrong during merge.");
  EXPECT_EQ(outcomeOf(runs.run("pdf.merge", {plain, locked})),
            "plain (merged).pdf, " + name + ": It is password-protected, so its pages are missing.");
  EXPECT_EQ(outcomeOf(runs.run("pdf.metadata", {locked})),
            refused + name + " is password-protected. Remove its password first.");
}

TEST(PDFOperations, KeepStructureAndHideContentWhenTheyProtect) {
  const PDFRuns runs;
  const fs::path plain = runs.file("plain.pdf", pdfOfPages(2, "secret", "", "/Outlines << /Marker (visible\\051) >>"));
  runs.run("pdf.encrypt", {plain}, {{"password", "x"}});
  const fs::path locked = runs / "plain (protected).pdf";
  const std::string bytes = contentOf(locked);
  EXPECT_EQ(bytes.find("secret"), std::string::npos);
  EXPECT_EQ(bytes.find("visible"), std::string::npos);
  ASSERT_EQ(printed("qpdf", {"--password=x", "--decrypt", "--qdf", locked, runs / "open.pdf"}), "");
  EXPECT_NE(contentOf(runs / "open.pdf").find("(visible\\))"), std::string::npos);
  EXPECT_EQ(wordsOf(runs / "open.pdf"), wordsOf(plain));
}

TEST(PDFOperations, BeginWithWhatTheDocumentSays) {
  const PDFRuns runs;
  const fs::path plain = runs.file("x.pdf", pdfOfPages(12));
  runs.run("pdf.metadata", {plain}, {{"title", "Tïtle"}, {"author", "日本"}, {"keywords", " a ,, b"}});
  const auto metadata = PDFRuns::configurationFor("pdf.metadata", runs / "x (metadata).pdf");
  const auto& values = dynamic_cast<const PDFMetadataConfig&>(*metadata);
  EXPECT_EQ(values.title + "/" + values.author + "/" + values.subject + "/" + values.keywords, "Tïtle/日本//a, b");
  EXPECT_NE(printed("pdfinfo", {runs / "x (metadata).pdf"}).find("Keywords:        a, b\n"), std::string::npos);
  runs.run("pdf.bookmarks", {plain},
           {{"entries", R"([{"title":" One; Ünö ","page":1},{"title":"  ","page":2},{"title":"Last","page":99}])"}});
  const auto bookmarks = PDFRuns::configurationFor("pdf.bookmarks", runs / "x (bookmarks).pdf");
  const auto& list = dynamic_cast<const PDFBookmarksConfig&>(*bookmarks);
  EXPECT_EQ(bookmarkListText(list.entries), R"([{"title":"One; Ünö","page":1},{"title":"Last","page":12}])");
  EXPECT_EQ(list.pageCount, 12);
  EXPECT_EQ(dynamic_cast<const PDFSplitConfig&>(*PDFRuns::configurationFor("pdf.split", plain)).pageCount, 12);
  EXPECT_EQ(
      dynamic_cast<const PDFSplitConfig&>(*PDFRuns::configurationFor("pdf.split", runs.file("no.pdf", "no"))).pageCount,
      0);
}

TEST(PDFOperations, TakeListsLongerThanAMessageToAWorker) {
  const PDFRuns runs;
  std::string entries;
  for (int number = 1; number <= 8'000; ++number) entries += fmt::format("{} Bookmark number {}\n", number % 3, number);
  const Ran ran = runs.run("pdf.bookmarks", {runs.file("x.pdf", pdfOfPages(2))}, {{"entries", entries}});
  EXPECT_EQ(ran.result->summary, "Set 8000 bookmarks.");
  const auto config = PDFRuns::configurationFor("pdf.bookmarks", runs / "x (bookmarks).pdf");
  const auto& read = dynamic_cast<const PDFBookmarksConfig&>(*config).entries;
  ASSERT_EQ(read.size(), 8'000U);
  EXPECT_EQ(read.back().title, "Bookmark number 8000");
}

TEST(PDFOperations, ReadOutlinesOfAllLevelsHoweverTheyLead) {
  PDFBuilder pdf;
  const int catalog = pdf.reserve();
  const int pages = pdf.reserve();
  const int page = pdf.add(fmt::format("<< /Type /Page /Parent {} 0 R /MediaBox [0 0 9 9] >>", pages));
  const int root = pdf.reserve();
  const int first = pdf.reserve();
  const int second = pdf.reserve();
  const int inner =
      pdf.add(fmt::format("<< /Title (by an action) /Parent {} 0 R /A << /S /GoTo /D [{} 0 R /Fit] >> /First {} 0 R >>",
                          first, page, first));
  pdf.set(first, fmt::format("<< /Title (leads nowhere) /First {} 0 R /Next {} 0 R >>", inner, second));
  pdf.set(second, fmt::format("<< /Title <FEFF00E9> /Dest /named /Next {} 0 R >>", first));
  pdf.set(root, fmt::format("<< /First {} 0 R >>", first));
  pdf.set(pages, fmt::format("<< /Type /Pages /Count 1 /Kids [{} 0 R] >>", page));
  pdf.set(catalog, fmt::format("<< /Type /Catalog /Pages {} 0 R /Outlines {} 0 R /Dests << /named [{} 0 R /Fit] >> >>",
                               pages, root, page));
  const PDFRuns runs;
  const auto config = PDFRuns::configurationFor("pdf.bookmarks", runs.file("x.pdf", pdf.file(catalog)));
  EXPECT_EQ(bookmarkListText(dynamic_cast<const PDFBookmarksConfig&>(*config).entries),
            R"([{"title":"by an action","page":1},{"title":"é","page":1}])");
}

TEST(PDFOperations, LeaveNothingOfAnnotations) {
  PDFBuilder pdf;
  const int catalog = pdf.reserve();
  const int pages = pdf.reserve();
  const int note = pdf.add("<< /Type /Annot /Subtype /Text /Rect [0 0 9 9] /Contents (a private remark) >>");
  const int page =
      pdf.add(fmt::format("<< /Type /Page /Parent {} 0 R /MediaBox [0 0 9 9] /Annots [{} 0 R] >>", pages, note));
  pdf.set(pages, fmt::format("<< /Type /Pages /Count 1 /Kids [{} 0 R] >>", page));
  pdf.set(catalog,
          fmt::format("<< /Type /Catalog /Pages {} 0 R /StructTreeRoot << /K << /Type /OBJR /Obj {} 0 R >> >> >>",
                      pages, note));
  const PDFRuns runs;
  EXPECT_EQ(outcomeOf(runs.run("pdf.delete-annotations", {runs.file("x.pdf", pdf.file(catalog))})), "x (clean).pdf");
  const std::string bytes = contentOf(runs / "x (clean).pdf");
  EXPECT_EQ(bytes.find("remark"), std::string::npos);
  EXPECT_EQ(bytes.find("/Annots"), std::string::npos);
  EXPECT_EQ(complaintsAbout(runs / "x (clean).pdf"), "");
}

TEST(PDFOperations, EndAWholeMergeForAFileThatIsNoPDF) {
  const PDFRuns runs;
  const Ran ran = runs.run("pdf.merge", {runs.file("a.pdf", pdfOfPages(1)), runs.file("b.pdf", "not a PDF")});
  ASSERT_TRUE(ran.error);
  EXPECT_EQ(ran.error->userMessage(), "Couldn't read b.pdf.");
  EXPECT_EQ(ran.error->underlying(), "Not a readable PDF");
}

}  // namespace
}  // namespace quirn::tests
