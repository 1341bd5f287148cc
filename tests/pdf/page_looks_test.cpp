// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Pages look as they did, pixel by pixel, after whatever rebuilds, redraws or flattens them.

#include <gtest/gtest.h>

#include "pdf/pdf_runs.h"
#include "pdf/rendered_pages.h"
#include "support/pdf_builder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

struct Look {
  const char* sentence;
  std::string page;  // entries
  std::string content = "";
  std::vector<std::string> annotations = {};
  std::string inherited = "";  // entries of the node above
};

// What pages refer to by number: 3 a font, 4 a form that is an arrow, 5 and 6 layers that are on and off, 7 a picture
// that 8 fades out to the right, 9 and 10 an isolated and a knockout group, 11 a state that fades by brightness.
const std::string resources =
    "/Resources << /Font << /F 3 0 R >> /XObject << /Arrow 4 0 R /Photo 7 0 R /Isolated 9 0 R /Knockout 10 0 R >> "
    "/Properties << /On 5 0 R /Off 6 0 R >> /ExtGState << /Half << /ca .5 /CA .5 >> /Dark << /BM /Multiply >> "
    "/Fade 11 0 R /Whole << /SMask /None >> >> >> ";

// Appearances: 13 scaled, 14 turned by its own matrix, 15 with its box elsewhere, 16 a marker that darkens, 17 a value.
void addAppearances(PDFBuilder& pdf) {
  const std::string arrow = "1 .5 0 rg 0 0 m 40 10 l 0 20 l f 0 0 .6 rg 2 2 6 6 re f";
  pdf.addStream("/BBox [0 0 40 20]", arrow);
  pdf.addStream("/BBox [0 0 40 20] /Matrix [0 1 -1 0 7 9]", arrow);
  pdf.addStream("/BBox [-20 -10 20 10]", "1 0 0 1 -20 -10 cm " + arrow);
  pdf.addStream(
      "/BBox [0 0 40 20] /Resources << /ExtGState << /Dark << /BM /Multiply >> >> >> /Group << /S "
      "/Transparency >>",
      "/Dark gs 1 1 0 rg 0 0 40 20 re f");
  pdf.addStream("/BBox [0 0 100 40] /Resources << /Font << /Helv 3 0 R >> >>",
                "/Tx BMC q 2 2 96 36 re W n BT /Helv 18 Tf .5 0 0 rg 4 12 Td (Ana) Tj ET Q EMC");
}

void addSharedObjects(PDFBuilder& pdf) {
  pdf.add("<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica >>");
  pdf.addStream("/Subtype /Form /BBox [0 0 40 20]", "1 .5 0 rg 0 0 m 40 10 l 0 20 l f 0 0 .6 rg 2 2 6 6 re f");
  pdf.add("<< /Type /OCG /Name (on) >>");
  pdf.add("<< /Type /OCG /Name (off) >>");
  std::string colors;
  std::string fading;
  for (int i = 0; i < 16 * 16; ++i) {
    colors += {static_cast<char>(i), static_cast<char>(255 - i), static_cast<char>(i % 16 * 16)};
    fading += static_cast<char>(255 - i % 16 * 16);
  }
  const std::string size = "/Subtype /Image /Width 16 /Height 16 /BitsPerComponent 8 ";
  pdf.addStream(size + "/ColorSpace /DeviceRGB /SMask 8 0 R", colors);
  pdf.addStream(size + "/ColorSpace /DeviceGray", fading);
  const std::string group = "/Subtype /Form /BBox [0 0 100 100] /Group << /S /Transparency /CS /DeviceRGB ";
  const std::string states = "/Resources << /ExtGState << /Dark << /BM /Multiply >> /Half << /ca .5 >> >> >> ";
  const std::string overlapping = "rg 0 0 60 60 re f 0 0 1 rg 30 30 60 60 re f";
  pdf.addStream(group + "/I true >> " + states, "/Dark gs 1 .8 0 " + overlapping);
  pdf.addStream(group + "/K true >> " + states, "/Half gs 1 0 0 " + overlapping);
  pdf.add("<< /SMask << /S /Luminosity /G 12 0 R >> >>");
  pdf.addStream("/Subtype /Form /BBox [0 0 300 300] /Group << /S /Transparency /CS /DeviceGray >>",
                "1 g 0 0 150 300 re f .4 g 150 0 150 300 re f");
  addAppearances(pdf);
}

// A page to a look, after as many objects as there are shared ones.
std::string documentOf(std::span<const Look> looks, const std::string& form = "") {
  PDFBuilder pdf;
  const int catalog = pdf.reserve();
  const int root = pdf.reserve();
  addSharedObjects(pdf);
  std::string kids;
  std::string fields;
  for (const Look& look : looks) {
    const int node = pdf.reserve();
    const int content = pdf.addStream("", look.content);
    std::string annotations;
    for (const std::string& annotation : look.annotations) {
      const int number = pdf.add(fmt::format("<< /Type /Annot {} >>", annotation));
      annotations += fmt::format("{} 0 R ", number);
      if (annotation.starts_with("/Subtype /Widget")) fields += fmt::format("{} 0 R ", number);
    }
    const int page = pdf.add(fmt::format("<< /Type /Page /Parent {} 0 R /Contents {} 0 R {} /Annots [{}] >>", node,
                                         content, look.page, annotations));
    pdf.set(node,
            fmt::format("<< /Type /Pages /Parent {} 0 R /Count 1 /Kids [{} 0 R] {} >>", root, page, look.inherited));
    kids += fmt::format("{} 0 R ", node);
  }
  pdf.set(root, fmt::format("<< /Type /Pages /Count {} /Kids [{}] /MediaBox [0 0 300 200] {} >>", looks.size(), kids,
                            resources));
  pdf.set(catalog,
          fmt::format("<< /Type /Catalog /Pages {} 0 R /OCProperties << /OCGs [5 0 R 6 0 R] /D << /ON [5 0 R] "
                      "/OFF [6 0 R] >> >> /AcroForm << /Fields [{}] /DR << /Font << /Helv 3 0 R >> >> {} >> >>",
                      root, fields, form));
  return pdf.file(catalog);
}

// Something at each corner and in the middle.
const std::string marks =
    "q 1 0 0 rg 4 4 20 10 re f 0 .6 0 rg 270 180 20 12 re f 0 0 1 rg 10 170 30 20 re f Q q 1 0 0 1 130 90 cm /Arrow Do "
    "Q BT /F 24 Tf 60 120 Td (Quartz jug) Tj ET ";

const Rendering contentAlone{.annotations = Rendering::Annotations::hidden};

const Look looks[] = {
    {"a plain page", "", marks},
    {"a page turned right", "/Rotate 90", marks},
    {"a page on its head", "/Rotate 180", marks},
    {"a page turned left", "/Rotate 270", marks},
    {"a page turned left by a negative angle", "/Rotate -90", marks},
    {"a crop box away from the origin", "/CropBox [50 60 250 180]", marks},
    {"a turned crop box", "/CropBox [50 60 250 180] /Rotate 90", marks},
    {"a media box away from the origin", "/MediaBox [-40 -20 220 180]", marks},
    {"a media box with its corners swapped", "/MediaBox [300 200 0 0]", marks},
    {"a crop box that is larger than the page", "/CropBox [-100 -100 900 900]", marks},
    {"inherited boxes and turn", "", marks, {}, "/MediaBox [20 20 220 160] /CropBox [40 40 200 140] /Rotate 270"},
    {"inherited resources, hiding others",
     "",
     "100 0 0 80 30 30 cm /Arrow Do",
     {},
     "/Resources << /XObject << /Arrow 7 0 R >> >>"},
    {"a unit of two points", "/UserUnit 2 /MediaBox [0 0 280 200]", marks},
    {"a layer that is on and one that is off", "",
     marks + "/OC /On BDC 1 0 0 rg 50 20 60 30 re f EMC /OC /Off BDC 0 g 150 20 100 60 re f EMC"},
    {"half transparent ink", "", marks + "/Half gs 1 0 1 rg 50 50 200 100 re f"},
    {"ink that darkens what is below", "", marks + "/Dark gs 0 1 1 rg 50 50 200 100 re f"},
    {"a group of its own that darkens within itself", "", ".5 g 0 0 300 200 re f 1 0 0 1 40 40 cm /Isolated Do"},
    {"a group whose parts knock each other out", "", ".9 g 0 0 300 200 re f 1 0 0 1 40 40 cm /Knockout Do"},
    {"a page that is a group", "/Group << /S /Transparency /CS /DeviceRGB /I true >>",
     "0 1 1 rg 0 0 200 100 re f /Dark gs 1 1 0 rg 100 50 200 150 re f"},
    {"a picture that fades out", "", marks + "100 0 0 100 90 40 cm /Photo Do"},
    {"content that fades by the brightness of other content", "", "/Fade gs 0 0 1 rg 20 20 260 160 re f /Whole gs "},
};

void expectLooks(std::span<const Look> wanted, const std::vector<Picture>& expected, const std::vector<Picture>& found,
                 const char* what) {
  ASSERT_EQ(found.size(), expected.size()) << what;
  for (std::size_t i = 0; i < found.size(); ++i)
    EXPECT_EQ(difference(expected[i], found[i]), "") << wanted[i % wanted.size()].sentence << ", " << what;
}

TEST(PageLooks, StayWhenAPageIsRebuiltRedrawnOrFlattened) {
  const PDFRuns runs;
  const fs::path file = runs.file("looks.pdf", documentOf(looks));
  const std::vector<Picture> originals = renderedPages(file);
  const std::pair<const char*, const char*> operations[] = {{"pdf.unlock", "looks (unlocked).pdf"},
                                                            {"pdf.repair", "looks (repaired).pdf"},
                                                            {"pdf.flatten", "looks (flattened).pdf"},
                                                            {"pdf.compress", "looks (compressed).pdf"}};
  for (const auto& [operationID, output] : operations) {
    ASSERT_EQ(outcomeOf(runs.run(operationID, {file})), output);
    EXPECT_EQ(complaintsAbout(runs / output), "");
    expectLooks(looks, originals, renderedPages(runs / output), operationID);
  }
}

TEST(PageLooks, StayWhenDocumentsAreMergedOrSplit) {
  const PDFRuns runs;
  const fs::path file = runs.file("looks.pdf", documentOf(looks));
  const std::vector<Picture> originals = renderedPages(file);
  ASSERT_EQ(outcomeOf(runs.run("pdf.split", {file}, {{"pagesPerChunk", "20"}})),
            "looks (split, pages 1-20).pdf, looks (split, page 21).pdf");
  std::vector<Picture> split = renderedPages(runs / "looks (split, pages 1-20).pdf");
  split.push_back(renderedPages(runs / "looks (split, page 21).pdf").front());
  expectLooks(looks, originals, split, "split");
  const fs::path again = runs.file("again.pdf", documentOf(looks));
  ASSERT_EQ(outcomeOf(runs.run("pdf.merge", {file, again})), "looks (merged).pdf");
  std::vector<Picture> twice = originals;
  twice.insert(twice.end(), originals.begin(), originals.end());
  expectLooks(looks, twice, renderedPages(runs / "looks (merged).pdf"), "merged");
}

// Cells of 580 by 810 on a sheet of 1202 by 842, in which every page stands at its own size.
TEST(PageLooks, StayInACellThatIsLargeEnough) {
  const PDFRuns runs;
  std::vector<Look> pages{{"the page that gives the sheet its size", "/MediaBox [0 0 842 1202]"}};
  pages.insert(pages.end(), std::begin(looks), std::end(looks));
  const fs::path file = runs.file("looks.pdf", documentOf(pages));
  const std::vector<Picture> originals = renderedPages(file);
  const std::vector<Picture> doubled = renderedPages(file, {.pixelsPerUnit = 2});
  ASSERT_EQ(outcomeOf(runs.run("pdf.nup", {file})), "looks (nup).pdf");
  const std::vector<Picture> sheets = renderedPages(runs / "looks (nup).pdf");
  ASSERT_EQ(sheets.size(), (pages.size() + 1) / 2);
  for (std::size_t i = 1; i < pages.size(); ++i) {
    const Picture& page = (pages[i].page.find("/UserUnit 2") == std::string::npos ? originals : doubled).at(i);
    const std::size_t left = (i % 2 == 0 ? 16 : 606) + (580 - page.width) / 2;
    const Picture found = sheets[i / 2].part(left, 16 + (810 - page.height) / 2, page.width, page.height);
    EXPECT_EQ(difference(page, found), "") << pages[i].sentence;
  }
}

const std::string place = "/Rect [60 100 180 150] ";
const std::string box = "/FT /Btn /AP << /N << /On 13 0 R /Off 15 0 R >> >> ";

const Look shownLooks[] = {
    {"an appearance fills its rectangle", "", marks, {"/Subtype /Stamp /AP << /N 13 0 R >> " + place}},
    {"an appearance that is turned", "", marks, {"/Subtype /Stamp /AP << /N 14 0 R >> " + place}},
    {"an appearance away from its origin", "", marks, {"/Subtype /Stamp /AP << /N 15 0 R >> " + place}},
    {"a rectangle with its corners swapped", "", marks, {"/Subtype /Stamp /AP << /N 13 0 R >> /Rect [180 150 60 100]"}},
    {"a marker doesn't hide the text",
     "",
     marks,
     {"/Subtype /Highlight /QuadPoints [60 150 180 150 60 100 180 100] /AP << /N 16 0 R >> " + place}},
    {"an annotation turns with its page", "/Rotate 90", marks, {"/Subtype /Stamp /AP << /N 13 0 R >> " + place}},
    {"or stands upright on it", "/Rotate 90", marks, {"/Subtype /Text /F 16 /AP << /N 13 0 R >> " + place}},
    {"upright where the page is on its head",
     "/Rotate 180",
     marks,
     {"/Subtype /Text /F 16 /AP << /N 13 0 R >> " + place}},
    {"one on a page cut at its edges",
     "/CropBox [50 60 250 180]",
     marks,
     {"/Subtype /Stamp /AP << /N 13 0 R >> /Rect [20 40 100 120]"}},
    {"one on a layer that is on", "", marks, {"/Subtype /Stamp /OC 5 0 R /AP << /N 13 0 R >> " + place}},
    {"one on a layer that is off", "", marks, {"/Subtype /Stamp /OC 6 0 R /AP << /N 13 0 R >> " + place}},
    {"a hidden one", "", marks, {"/Subtype /Stamp /F 2 /AP << /N 13 0 R >> " + place}},
    {"one for print alone", "", marks, {"/Subtype /Stamp /F 36 /AP << /N 13 0 R >> " + place}},
    {"later ones lie above",
     "",
     marks,
     {"/Subtype /Stamp /AP << /N 13 0 R >> " + place, "/Subtype /Stamp /AP << /N 14 0 R >> " + place}},
    {"a field's value", "", marks, {"/Subtype /Widget /FT /Tx /V (Ana) /AP << /N 17 0 R >> " + place}},
    {"a choice", "", marks, {"/Subtype /Widget /FT /Ch /V (Ana) /AP << /N 17 0 R >> " + place}},
    {"a box that is on", "", marks, {"/Subtype /Widget /AS /On " + box + place}},
    {"a box that is off", "", marks, {"/Subtype /Widget /AS /Off " + box + place}},
    {"one of two buttons",
     "",
     marks,
     {"/Subtype /Widget /Ff 32768 /AS /On " + box + place,
      "/Subtype /Widget /Ff 32768 /AS /Off /Rect [200 100 240 120] " + box}},
    {"content that leaves its scale behind",
     "",
     ".5 0 0 .5 0 0 cm q q " + marks,
     {"/Subtype /Stamp /AP << /N 13 0 R >> " + place}},
};

TEST(PageLooks, StayWhenAppearancesBecomeContent) {
  const PDFRuns runs;
  const fs::path file = runs.file("looks.pdf", documentOf(shownLooks));
  const std::vector<Picture> originals = renderedPages(file);
  ASSERT_EQ(outcomeOf(runs.run("pdf.flatten", {file})), "looks (flattened).pdf");
  expectLooks(shownLooks, originals, renderedPages(runs / "looks (flattened).pdf", contentAlone), "flattened");
}

// Of markup without an appearance, content that looks the same.
struct Drawn {
  const char* sentence;
  std::string annotation;
  std::string content;
};

const Drawn drawn[] = {
    {"a square", "/Subtype /Square /C [1 0 0] /IC [1 1 0] /BS << /W 6 >> " + place,
     "1 0 0 RG 1 1 0 rg 6 w 63 103 114 44 re B"},
    {"a square that shines through", "/Subtype /Square /C [1 0 0] /CA .5 /Border [0 0 6] " + place,
     "/Half gs 1 0 0 RG 6 w 63 103 114 44 re S"},
    {"a square of dashes", "/Subtype /Square /C [1 0 0] /BS << /W 6 /S /D /D [12 6] >> " + place,
     "1 0 0 RG [12 6] 0 d 6 w 63 103 114 44 re S"},
    {"a circle within its rectangle",
     "/Subtype /Circle /C [1 0 0] /IC [0 1 1] /RD [10 10 10 10] /BS << /W 4 >> " + place,
     "1 0 0 RG 0 1 1 rg 4 w 168 125 m 168 132.18 146.51 138 120 138 c 93.49 138 72 132.18 72 125 c "
     "72 117.82 93.49 112 120 112 c 146.51 112 168 117.82 168 125 c b"},
    {"a line", "/Subtype /Line /C [0 0 1] /L [70 110 170 140] /BS << /W 3 >> " + place,
     "0 0 1 RG 3 w 1 J 70 110 m 170 140 l S"},
    {"a line with endings",
     "/Subtype /Line /C [0 0 1] /IC [1 0 0] /L [70 125 170 125] /LE [/Butt /ClosedArrow] /BS << /W 3 >> " + place,
     "0 0 1 RG 1 0 0 rg 3 w 1 J 1 j 70 125 m 170 125 l 70 113 m 70 137 l S 143 137 m 170 125 l 143 113 l b"},
    {"ink", "/Subtype /Ink /C [0 .5 0] /InkList [[70 110 90 140 120 110] [70 145 175 145]] /BS << /W 3 >> " + place,
     "0 .5 0 RG 3 w 1 J 1 j 70 110 m 90 140 l 120 110 l S 70 145 m 175 145 l S"},
    {"a polygon",
     "/Subtype /Polygon /C [0 .5 0] /IC [.8 1 .8] /Vertices [70 110 90 140 150 145] /BS << /W 3 >> " + place,
     "0 .5 0 RG .8 1 .8 rg 3 w 1 J 1 j 70 110 m 90 140 l 150 145 l b"},
    {"a marker", "/Subtype /Highlight /C [1 1 0] /QuadPoints [60 145 180 145 60 112 180 112] " + place,
     "/Dark gs 1 1 0 rg 60 112 120 33 re f"},
    {"the frame of a link", "/Subtype /Link /Border [0 0 2] /C [0 0 1] " + place, "0 0 1 RG 2 w 61 101 118 48 re S"},
    {"a radio button that is on", "/Subtype /Widget /FT /Btn /Ff 32768 /AS /On /MK << /CA (n) /BC [1 0 0] >> " + place,
     "1 0 0 RG 60.5 100.5 119 49 re S 106.2 111.2 27.6 27.6 re f"},
    {"a raised button",
     "/Subtype /Widget /FT /Btn /Ff 65536 /BS << /S /B /W 4 >> /MK << /BG [1 .8 0] /BC [0 0 1] >> " + place,
     "1 .8 0 rg 0 0 1 RG 4 w 62 102 116 46 re B 1 g 64 104 m 64 146 l 176 146 l 172 142 l 68 142 l 68 108 l f "
     ".5 g 64 104 m 176 104 l 176 146 l 172 142 l 172 108 l 68 108 l f"},
};

TEST(PageLooks, OfMarkupWithoutAppearancesAreWhatItSays) {
  std::vector<Look> annotated;
  std::vector<Look> written;
  for (const Drawn& row : drawn) {
    annotated.push_back({row.sentence, "", marks, {row.annotation}});
    written.push_back({row.sentence, "", marks + row.content});
  }
  const PDFRuns runs;
  const fs::path file = runs.file("looks.pdf", documentOf(annotated));
  ASSERT_EQ(outcomeOf(runs.run("pdf.flatten", {file})), "looks (flattened).pdf");
  expectLooks(annotated, renderedPages(runs.file("written.pdf", documentOf(written))),
              renderedPages(runs / "looks (flattened).pdf", contentAlone), "flattened");
}

const std::string inForm = "/DA (/Helv 16 Tf 0 0 1 rg) " + place;
const std::string quads = "/C [1 0 0] /QuadPoints [60 145 180 145 60 112 180 112] " + place;

// Letters and waves are every program's own; their place is not.
const Look placedLooks[] = {
    {"an underline", "", "", {"/Subtype /Underline " + quads}},
    {"a line through the text", "", "", {"/Subtype /StrikeOut " + quads}},
    {"a wave", "", "", {"/Subtype /Squiggly " + quads}},
    {"a free text", "", "", {"/Subtype /FreeText /DA (/Helv 16 Tf 0 0 1 rg) /Contents (Some free words) " + place}},
    {"a stamp", "", "", {"/Subtype /Stamp /Name /Approved " + place}},
    {"a note", "", "", {"/Subtype /Text " + place}},
    {"a value", "", "", {"/Subtype /Widget /T (1) /FT /Tx /V (Value) " + inForm}},
    {"a value on the right", "", "", {"/Subtype /Widget /T (2) /FT /Tx /Q 2 /V (Value) " + inForm}},
    {"lines", "", "", {"/Subtype /Widget /T (3) /FT /Tx /Ff 4096 /V (Several words that need lines) " + inForm}},
    {"a comb", "", "", {"/Subtype /Widget /T (4) /FT /Tx /Ff 16777216 /MaxLen 6 /V (ABCD) " + inForm}},
    {"a choice",
     "",
     "",
     {"/Subtype /Widget /T (5) /FT /Ch /Ff 131072 /V (b) /Opt [[(a) (First)] [(b) (Second)]] " + inForm}},
    {"a list", "", "", {"/Subtype /Widget /T (6) /FT /Ch /V (b) /Opt [(a) (b) (c)] " + inForm}},
};

TEST(PageLooks, OfTextWithoutAppearancesAreWhereOthersHaveThem) {
  const PDFRuns runs;
  const fs::path file = runs.file("looks.pdf", documentOf(placedLooks, "/NeedAppearances true"));
  const std::vector<Picture> expected = renderedPages(file);
  ASSERT_EQ(outcomeOf(runs.run("pdf.flatten", {file})), "looks (flattened).pdf");
  const std::vector<Picture> found = renderedPages(runs / "looks (flattened).pdf", contentAlone);
  ASSERT_EQ(found.size(), expected.size());
  for (std::size_t i = 0; i < found.size(); ++i)
    EXPECT_EQ(displacement(expected[i], found[i]), "") << placedLooks[i].sentence;
}

}  // namespace
}  // namespace quirn::tests
