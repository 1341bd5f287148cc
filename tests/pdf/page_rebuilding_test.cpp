// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What stays when pages are taken over into a new document, and what odd documents come to.

#include <gtest/gtest.h>

#include <regex>

#include "pdf/pdf_runs.h"
#include "platform/json.h"
#include "support/pdf_builder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

constexpr const char* unreadable = "Couldn't read odd.pdf.";
constexpr const char* noPages = "Something went wrong during decrypt.";

// A document with one page of text, and more objects from `more` on, which gets the numbers of catalog, tree and page.
std::string onePage(const std::function<void(PDFBuilder&, int, int, int)>& more) {
  PDFBuilder pdf;
  const int catalog = pdf.reserve();
  const int pages = pdf.reserve();
  const int page = pdf.reserve();
  more(pdf, catalog, pages, page);
  return pdf.file(catalog);
}

std::string pageText(int content, int pages) {
  return fmt::format(
      "<< /Type /Page /Parent {} 0 R /MediaBox [0 0 595 842] /Contents {} 0 R /Resources << /Font << /F << "
      "/Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >> >> >>",
      pages, content);
}

int contentOfPage(PDFBuilder& pdf, const std::string& word) {
  return pdf.addStream("", fmt::format("BT /F 24 Tf 72 700 Td ({}) Tj ET", word));
}

std::string treeOf(const std::string& kids) {
  return onePage([&](PDFBuilder& pdf, int catalog, int pages, int page) {
    pdf.set(catalog, fmt::format("<< /Type /Catalog /Pages {} 0 R >>", pages));
    pdf.set(page, pageText(contentOfPage(pdf, "word"), pages));
    pdf.set(pages, fmt::format("<< /Type /Pages /Count 1 /Kids [{}] >>", fmt::format(fmt::runtime(kids), page, pages)));
  });
}

std::string repeated(const std::string& text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

std::string deepTree(int levels) {
  return onePage([&](PDFBuilder& pdf, int catalog, int pages, int page) {
    pdf.set(catalog, fmt::format("<< /Type /Catalog /Pages {} 0 R >>", pages));
    pdf.set(page, pageText(contentOfPage(pdf, "word"), pages));
    int below = page;
    for (int level = 1; level < levels; ++level) {
      below = pdf.add(fmt::format("<< /Type /Pages /Count 1 /Kids [{} 0 R] >>", below));
    }
    pdf.set(pages, fmt::format("<< /Type /Pages /Count 1 /Kids [{} 0 R] >>", below));
  });
}

// Objects that each refer to the next, and the last to the first.
std::string longChain(int length) {
  return onePage([&](PDFBuilder& pdf, int catalog, int pages, int page) {
    pdf.set(catalog, fmt::format("<< /Type /Catalog /Pages {} 0 R >>", pages));
    pdf.set(pages, fmt::format("<< /Type /Pages /Count 1 /Kids [{} 0 R] >>", page));
    std::string text = pageText(contentOfPage(pdf, "word"), pages);
    pdf.set(page, text.insert(2, fmt::format(" /Chain {} 0 R", page + 2)));
    for (int i = 0; i < length; ++i) pdf.add(fmt::format("<< /Next {} 0 R >>", page + 2 + (i + 1) % length));
  });
}

std::string replaced(std::string text, const std::string& what, const std::string& with) {
  return text.replace(text.find(what), what.size(), with);
}

// An update takes the number of the second page's content for that of a third page.
std::string withNumberTakenAgain() {
  std::string file = pdfOfPages(2, "word");
  const std::size_t before = file.rfind("xref\n0 ");
  std::string table = "xref\n";
  const auto add = [&](const std::string& name, const std::string& object) {
    table += fmt::format("{} 1\n{:010} 0000{} n \n", name.front(), file.size(), name.back());
    file += fmt::format("{} obj\n{}\nendobj\n", name, object);
  };
  add("2 0",
      "<< /Type /Pages /Count 3 /Kids [5 0 R 7 0 R 8 0 R] /MediaBox [0 0 595 842] /Resources << /Font << /F 3 0 R >> "
      ">> "
      ">>");
  add("6 1", "<< /Length 34 >>\nstream\nBT /F 24 Tf 72 700 Td (new) Tj ET \nendstream");
  add("8 0", "<< /Type /Page /Parent 2 0 R /Contents 6 1 R /MediaBox [0 0 595 842] >>");
  return fmt::format("{}{}trailer\n<< /Size 9 /Root 1 0 R /Prev {} >>\nstartxref\n{}\n%%EOF\n", file, table, before,
                     file.size());
}

TEST(PageRebuilding, EndsSoundlyOnOddDocuments) {
  struct Row {
    std::string name;
    std::string content;
    std::string expected;  // the words of the pages, or a sentence
  };
  const std::string plain = pdfOfPages(2, "word");
  const std::vector<Row> rows{
      {"a page that stands in the tree itself, not by reference",
       treeOf("<< /Type /Page /MediaBox [0 0 9 9] >> {} 0 R"), "|word |"},
      {"a page that is listed twice is shown twice", treeOf("{0} 0 R {0} 0 R"), "word |word |"},
      {"a tree that holds itself", treeOf("{1} 0 R {0} 0 R {1} 0 R"), "word |"},
      {"kids that are no pages", treeOf("null 12 (text) 99 0 R {} 0 R"), "word |"},
      {"a tree of many levels", deepTree(90), "word |"},
      {"a tree of too many levels", deepTree(50'000),
       "Quirn can't run this on these files. odd.pdf is nested deeper than Quirn follows."},
      {"objects that refer to one another in a long circle", longChain(20'000), "word |"},
      {"a cross-reference table that leads nowhere", replaced(plain, "startxref\n", "startxref\n7"),
       "word 1 |word 2 |"},
      {"a file whose end is missing", plain.substr(0, plain.find("xref\n0")), unreadable},
      {"bytes before the header", "junk\n" + plain, "word 1 |word 2 |"},
      {"a length that is wrong", replaced(plain, "/Length ", "/Length 9"), "word 1 |word 2 |"},
      {"a length that lies by far", replaced(plain, "/Length ", "/Length 99999999"), "word 1 |word 2 |"},
      {"nesting without end in a page", pdfOfPages(1, "word", "/Deep " + std::string(100'000, '[')), noPages},
      {"a number that was taken again, and is still referred to as it was", withNumberTakenAgain(), "word 1 ||new |"},
      {"a page that is listed without end", treeOf(repeated("{0} 0 R ", 50'000)), unreadable},
      {"no pages", pdfOfPages(0), noPages},
      {"a catalog without a tree", replaced(plain, "/Pages 2 0 R", "/Nothing 1"), noPages},
      {"no PDF at all", "<html>\n<body>not a PDF</body>\n</html>\n", unreadable},
      {"nothing", "", unreadable},
      {"a header and no more", "%PDF-1.7\n", unreadable},
  };
  for (const Row& row : rows) {
    SCOPED_TRACE(row.name);
    const PDFRuns runs;
    const Ran ran = runs.run("pdf.unlock", {runs.file("odd.pdf", row.content)});
    if (!ran.result) {
      EXPECT_EQ(outcomeOf(ran), row.expected);
      continue;
    }
    EXPECT_EQ(wordsOf(runs / "odd (unlocked).pdf"), row.expected);
    EXPECT_EQ(complaintsAbout(runs / "odd (unlocked).pdf"), "");
  }
}

TEST(PageRebuilding, ReadsWhatOtherProgramsWrite) {
  const PDFRuns runs;
  const fs::path plain = runs.file("plain.pdf", pdfOfPages(30, "word"));
  const std::string words = wordsOf(plain);
  const std::vector<std::vector<std::string>> rows{
      {"--object-streams=generate"},
      {"--linearize"},
      {"--object-streams=generate", "--linearize"},
      {"--qdf"},
      {"--allow-weak-crypto", "--encrypt", "user", "owner", "40", "--"},
      {"--allow-weak-crypto", "--encrypt", "user", "owner", "128", "--use-aes=n", "--"},
      {"--allow-weak-crypto", "--encrypt", "user", "owner", "128", "--use-aes=y", "--"},
      {"--encrypt", "user", "owner", "256", "--"},
      {"--object-streams=generate", "--encrypt", "user", "owner", "256", "--"},
      {"--allow-weak-crypto", "--encrypt", "user", "owner", "256", "--force-R5", "--"},
      {"--encrypt", "", "owner", "256", "--modify=none", "--extract=n", "--"},
  };
  for (std::vector<std::string> arguments : rows) {
    SCOPED_TRACE(fmt::format("{}", fmt::join(arguments, " ")));
    const fs::path file = runs / "written.pdf";
    arguments.insert(arguments.end(), {plain.string(), file.string()});
    ASSERT_EQ(printed("qpdf", arguments), "");
    for (const std::string password : {"user", "owner"}) {
      const Ran ran = runs.run("pdf.unlock", {file}, {{"password", password}});
      ASSERT_TRUE(ran.result) << outcomeOf(ran);
      const fs::path output = ran.result->outputs.at(0).url;
      EXPECT_EQ(complaintsAbout(output), "");
      EXPECT_EQ(wordsOf(output), words);
      EXPECT_EQ(printed("qpdf", {"--show-encryption", output}), "File is not encrypted\n");
    }
  }
}

TEST(PageRebuilding, KeepsWhatPagesInheritAndHowTheyAreShown) {
  const PDFRuns runs;
  const std::string tree = "/Rotate 90 /CropBox [100 50 400 700] /MediaBox [0 0 595 842]";
  const std::string content =
      replaced(pdfOfPages(2, "word", "/UserUnit 2 /TrimBox [120 60 300 600]"), "/MediaBox [0 0 595 842]", tree);
  const fs::path source = runs.file("odd.pdf", content);
  const Ran ran = runs.run("pdf.split", {source});
  ASSERT_EQ(outcomeOf(ran), "odd (split, page 1).pdf, odd (split, page 2).pdf");
  for (const char* page : {"1", "2"}) {
    const fs::path output = runs / fmt::format("odd (split, page {}).pdf", page);
    EXPECT_EQ(complaintsAbout(output), "");
    const auto boxes = [](const fs::path& file, const std::string& number) {
      std::string info = printed("pdfinfo", {"-box", "-f", number, "-l", number, file});
      info = info.substr(info.find("Page "), info.find("File size") - info.find("Page "));
      return std::regex_replace(info, std::regex("Page +[12]"), "Page");
    };
    EXPECT_EQ(boxes(output, "1"), boxes(source, page));
    const auto picture = [&](const fs::path& file, const char* number) {
      return printed("pdftoppm", {"-r", "20", "-f", number, "-l", number, file});
    };
    EXPECT_EQ(picture(output, "1"), picture(source, page));
  }
}

// A form of a parent "person" with the fields "name" and "city", a page each.
std::string form(const std::string& name, const std::string& city) {
  PDFBuilder pdf;
  const int catalog = pdf.reserve();
  const int pages = pdf.reserve();
  const int person = pdf.reserve();
  const int look = pdf.addStream("/Type /XObject /Subtype /Form /BBox [0 0 100 20]", "0 0 100 20 re f");
  std::string kids;
  std::string fields;
  for (const auto& [field, value] : {std::pair("name", name), std::pair("city", city)}) {
    const int page = pdf.reserve();
    const int widget =
        pdf.add(fmt::format("<< /Type /Annot /Subtype /Widget /Parent {} 0 R /T ({}) /V ({}) /Rect [50 50 150 70] "
                            "/P {} 0 R /AP << /N {} 0 R >> >>",
                            person, field, value, page, look));
    pdf.set(page,
            fmt::format("<< /Type /Page /Parent {} 0 R /MediaBox [0 0 200 200] /Annots [{} 0 R] >>", pages, widget));
    kids += fmt::format("{} 0 R ", page);
    fields += fmt::format("{} 0 R ", widget);
  }
  pdf.set(person, fmt::format("<< /FT /Tx /T (person) /Kids [{}] >>", fields));
  pdf.set(pages, fmt::format("<< /Type /Pages /Count 2 /Kids [{}] >>", kids));
  pdf.set(catalog,
          fmt::format("<< /Type /Catalog /Pages {} 0 R /AcroForm << /Fields [{} 0 R] /DA (/Helv 0 Tf) /DR << /Font "
                      "<< /Helv << /Type /Font /Subtype /Type1 /BaseFont /Helvetica >> >> >> >> >>",
                      pages, person));
  return pdf.file(catalog);
}

// "person.name=Zoe", …
std::string fieldsOf(const fs::path& file) {
  const auto json = platform::parsedJson(printed("qpdf", {"--json", "--json-key=acroform", file}));
  std::string text;
  for (const platform::JsonValue& field : *json.find("acroform")->find("fields")->array()) {
    text += *field.find("fullname")->string() + "=" + field.find("value")->string()->substr(2) + " ";
  }
  return text;
}

TEST(PageRebuilding, KeepsTheFieldsThatAreOnThePages) {
  const PDFRuns runs;
  const fs::path source = runs.file("form.pdf", form("Zoe", "Oslo"));
  runs.run("pdf.split", {source});
  EXPECT_EQ(fieldsOf(runs / "form (split, page 1).pdf"), "person.name=Zoe ");
  EXPECT_EQ(fieldsOf(runs / "form (split, page 2).pdf"), "person.city=Oslo ");
  EXPECT_EQ(contentOf(runs / "form (split, page 2).pdf").find("Zoe"), std::string::npos) << "another page's value";
  runs.run("pdf.merge", {source, runs.file("other.pdf", form("Bo", "Rome"))});
  const fs::path merged = runs / "form (merged).pdf";
  EXPECT_EQ(complaintsAbout(merged), "");
  EXPECT_EQ(fieldsOf(merged), "person.name=Zoe person.city=Oslo person (2).name=Bo person (2).city=Rome ");
}

// Two pages; each shows one of two layers, of which the second is off.
std::string layered() {
  PDFBuilder pdf;
  const int catalog = pdf.reserve();
  const int pages = pdf.reserve();
  std::string kids;
  std::string layers;
  for (const char* name : {"shown", "hidden"}) {
    const int layer = pdf.add(fmt::format("<< /Type /OCG /Name ({}) >>", name));
    const int content = pdf.addStream("", "/OC /L BDC 20 20 100 100 re f EMC");
    const int page =
        pdf.add(fmt::format("<< /Type /Page /Parent {} 0 R /MediaBox [0 0 200 200] /Contents {} 0 R /Resources "
                            "<< /Properties << /L {} 0 R >> >> >>",
                            pages, content, layer));
    kids += fmt::format("{} 0 R ", page);
    layers += fmt::format("{} 0 R ", layer);
  }
  pdf.set(pages, fmt::format("<< /Type /Pages /Count 2 /Kids [{}] >>", kids));
  const std::string off = layers.substr(layers.find("R ") + 2);
  pdf.set(catalog,
          fmt::format("<< /Type /Catalog /Pages {} 0 R /OCProperties << /OCGs [{}] /D << /OFF [{}] /Order [{}] >> "
                      ">> >>",
                      pages, layers, off, layers));
  return pdf.file(catalog);
}

TEST(PageRebuilding, KeepsLayersOnOrOff) {
  const PDFRuns runs;
  const fs::path source = runs.file("layers.pdf", layered());
  const auto picture = [](const fs::path& file, const char* page) {
    return printed("pdftoppm", {"-r", "20", "-f", page, "-l", page, file});
  };
  EXPECT_NE(picture(source, "1"), picture(source, "2"));
  runs.run("pdf.split", {source});
  EXPECT_EQ(picture(runs / "layers (split, page 1).pdf", "1"), picture(source, "1"));
  EXPECT_EQ(picture(runs / "layers (split, page 2).pdf", "1"), picture(source, "2"));
  EXPECT_EQ(contentOf(runs / "layers (split, page 1).pdf").find("hidden"), std::string::npos);
}

TEST(PageRebuilding, KeepsLinksThatWentByNameAndLeavesTheRestOfTheDocumentBehind) {
  const PDFRuns runs;
  const std::string content = pdfOfPages(
      2, "word", "/Annots [<< /Type /Annot /Subtype /Link /Rect [0 0 9 9] /Dest (second) >>]",
      "/Names << /Dests << /Names [(second) << /D [6 0 R /Fit] >>] >> /JavaScript << /Names [(x) << /S /JavaScript /JS "
      "(app.alert\\(1\\)) >>] >> >> /OpenAction << /S /JavaScript /JS (app.alert\\(2\\)) >> /Lang (en)");
  const Ran ran = runs.run("pdf.unlock", {runs.file("links.pdf", content)});
  ASSERT_TRUE(ran.result);
  const std::string output = contentOf(ran.result->outputs.at(0).url);
  EXPECT_NE(output.find("/Fit"), std::string::npos);
  EXPECT_EQ(output.find("alert"), std::string::npos);
  EXPECT_EQ(complaintsAbout(ran.result->outputs.at(0).url), "");
}

TEST(PageRebuilding, TakesThousandsOfPages) {
  const PDFRuns runs;
  const fs::path source = runs.file("long.pdf", pdfOfPages(5'000, "word"));
  const Ran ran = runs.run("pdf.merge", {source, source});
  ASSERT_TRUE(ran.result) << outcomeOf(ran);
  EXPECT_EQ(ran.result->summary, "Merged 2 PDFs (10000 pages) into long (merged).pdf.");
  EXPECT_EQ(printed("qpdf", {"--show-npages", runs / "long (merged).pdf"}), "10000\n");
}

}  // namespace
}  // namespace quirn::tests
