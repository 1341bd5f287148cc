// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Annotations and form fields that have become content.

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "pdf/pdf_runs.h"
#include "support/pdf_builder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

// A page with these annotations, which may name the form "/Box" of 10 by 20 that says "box".
std::string annotated(const std::vector<std::string>& annotations, const std::string& form = "") {
  PDFBuilder pdf;
  const int catalog = pdf.reserve();
  const int pages = pdf.reserve();
  const int font = pdf.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
  const int box =
      pdf.addStream(fmt::format("/Subtype /Form /BBox [0 0 100 50] /Resources << /Font << /F {} 0 R >> >>", font),
                    "BT /F 20 Tf 5 5 Td (box) Tj ET");
  std::string all;
  for (std::string annotation : annotations) {
    const std::size_t at = annotation.find("BOX");
    if (at != std::string::npos) annotation.replace(at, 3, fmt::format("{} 0 R", box));
    all += fmt::format("{} 0 R ", pdf.add("<< /Type /Annot " + annotation + " >>"));
  }
  const int page =
      pdf.add(fmt::format("<< /Type /Page /Parent {} 0 R /MediaBox [0 0 600 800] /Annots [{}] >>", pages, all));
  pdf.set(catalog, fmt::format("<< /Type /Catalog /Pages {} 0 R /AcroForm << /Fields [{}] {} >> >>", pages, all, form));
  pdf.set(pages, fmt::format("<< /Type /Pages /Count 1 /Kids [{} 0 R] >>", page));
  return pdf.file(catalog);
}

const std::string place = "/Rect [100 100 300 140] ";
const std::string field = "/Subtype /Widget /DA (/Helv 12 Tf 0 g) " + place;

struct Row {
  const char* sentence;
  std::string annotation;
  std::string form;
  const char* words;
};

const Row rows[] = {
    {"a stamp shows its appearance", "/Subtype /Stamp /AP << /N BOX >> " + place, "", "box |"},
    {"a hidden one shows nothing", "/Subtype /Stamp /F 2 /AP << /N BOX >> " + place, "", "|"},
    {"one that is for print alone shows nothing", "/Subtype /Stamp /F 32 /AP << /N BOX >> " + place, "", "|"},
    {"a pop-up shows nothing", "/Subtype /Popup /AP << /N BOX >> " + place, "", "|"},
    {"a box that is on", field + "/FT /Btn /AS /Yes /AP << /N << /Yes BOX >> >>", "", "box |"},
    {"a box that is off", field + "/FT /Btn /AS /Off /AP << /N << /Yes BOX >> >>", "", "|"},
    {"text without an appearance", field + "/FT /Tx /V (Ana)", "", "Ana |"},
    {"text beyond Latin", field + "/FT /Tx /V <FEFF6A5F5BC6>", "", "機密 |"},
    {"text in several lines", field + "/FT /Tx /Ff 4096 /V (one\ntwo)", "", "one two |"},
    {"text whose appearance is out of date", field + "/FT /Tx /V (new) /AP << /N BOX >>", "/NeedAppearances true",
     "new |"},
    {"text whose appearance is good", field + "/FT /Tx /V (new) /AP << /N BOX >>", "", "box |"},
    {"a choice is shown as its label", field + "/FT /Ch /Ff 131072 /V (1) /Opt [[(1) (First)] [(2) (Second)]]", "",
     "First |"},
    {"a list shows its options", field + "/FT /Ch /V (b) /Opt [(aa) (b)]", "", "aa b |"},
    {"a password isn't told", field + "/FT /Tx /Ff 8192 /V (pass)", "", "**** |"},
    {"a button shows its caption", field + "/FT /Btn /Ff 65536 /MK << /CA (Send) >>", "", "Send |"},
    {"a free text without an appearance", "/Subtype /FreeText /DA (/Helv 12 Tf 0 g) /Contents (note) " + place, "",
     "note |"},
    {"a rubber stamp without an appearance", "/Subtype /Stamp /Name /NotApproved " + place, "", "NOT APPROVED |"},
};

TEST(FlattenedPages, SayWhatWasSeenOnThem) {
  for (const Row& row : rows) {
    const PDFRuns runs;
    const fs::path file = runs.file("form.pdf", annotated({row.annotation}, row.form));
    EXPECT_EQ(outcomeOf(runs.run("pdf.flatten", {file})), "form (flattened).pdf") << row.sentence;
    const fs::path output = runs / "form (flattened).pdf";
    EXPECT_EQ(wordsOf(output), row.words) << row.sentence;
    EXPECT_EQ(complaintsAbout(output), "") << row.sentence;
    const std::string objects = printed("qpdf", {"--qdf", "--object-streams=disable", output.string(), "-"});
    EXPECT_EQ(objects.find("/Annots"), std::string::npos) << row.sentence;
    EXPECT_EQ(objects.find("/AcroForm"), std::string::npos) << row.sentence;
  }
}

const char* const drawnKinds[] = {
    "/Subtype /Highlight /QuadPoints [100 140 300 140 100 100 300 100] /C [1 1 0] ",
    "/Subtype /Underline ",
    "/Subtype /StrikeOut ",
    "/Subtype /Squiggly ",
    "/Subtype /Line /L [110 110 290 130] /LE [/Circle /ClosedArrow] ",
    "/Subtype /Square ",
    "/Subtype /Circle /IC [1 0 0] ",
    "/Subtype /Polygon /Vertices [100 100 200 140 300 100] ",
    "/Subtype /PolyLine /Vertices [100 100 200 140 300 100] ",
    "/Subtype /Ink /InkList [[100 100 200 140] [250 110 300 100]] ",
    "/Subtype /Text ",
    "/Subtype /Caret ",
    "/Subtype /FileAttachment ",
    "/Subtype /Link /Border [0 0 1] ",
    "/Subtype /Widget /FT /Btn /AS /On /MK << /CA (4) /BC [0] >> ",
    "/Subtype /Widget /FT /Btn /Ff 32768 /AS /On ",
};

TEST(FlattenedPages, ShowMarkupThatHasNoAppearance) {
  const auto picture = [](const fs::path& file) { return printed("pdftoppm", {"-r", "30", file.string()}); };
  const PDFRuns empty;
  const std::string blank = picture(empty.file("blank.pdf", annotated({})));
  for (const std::string kind : drawnKinds) {
    const PDFRuns runs;
    const fs::path file = runs.file("form.pdf", annotated({kind + place}));
    EXPECT_EQ(outcomeOf(runs.run("pdf.flatten", {file})), "form (flattened).pdf") << kind;
    EXPECT_EQ(complaintsAbout(runs / "form (flattened).pdf"), "") << kind;
    EXPECT_TRUE(picture(runs / "form (flattened).pdf") != blank) << kind;
  }
}

TEST(FlattenedPages, KeepLinksThatLeadSomewhere) {
  const PDFRuns runs;
  const fs::path file =
      runs.file("links.pdf", annotated({"/Subtype /Link /A << /S /URI /URI (https://example.org/) >> " + place}));
  runs.run("pdf.flatten", {file});
  EXPECT_THAT(printed("pdfinfo", {"-url", (runs / "links (flattened).pdf").string()}),
              testing::HasSubstr("https://example.org/"));
}

TEST(FlattenedPages, AreWhatIsResized) {
  const PDFRuns runs;
  const fs::path file = runs.file("form.pdf", annotated({field + "/FT /Tx /V (Ana)"}));
  EXPECT_EQ(outcomeOf(runs.run("pdf.resize-paper", {file})), "form (resized).pdf");
  EXPECT_EQ(wordsOf(runs / "form (resized).pdf"), "Ana |");
}

}  // namespace
}  // namespace quirn::tests
