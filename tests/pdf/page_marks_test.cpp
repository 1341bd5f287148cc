// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Where page numbers, watermarks and margins are on a page.

#include <gtest/gtest.h>

#include "pdf/pdf_compress_operation.h"
#include "pdf/pdf_crop_operation.h"
#include "pdf/pdf_page_numbers_operation.h"
#include "pdf/pdf_watermark_operation.h"

namespace quirn {
namespace {

using platform::PDFRectangle;

constexpr PDFRectangle letter{0, 0, 612, 792};
constexpr PDFRectangle offOrigin{100, 50, 712, 842};

struct NumberRow {
  PDFPageNumbersConfig::Position position;
  PDFRectangle box;
  PDFRectangle rectangle;
};

using enum PDFPageNumbersConfig::Position;
constexpr NumberRow numberRows[] = {
    {bottomCenter, letter, {176, 28, 436, 44}},    {bottomRight, letter, {324, 28, 584, 44}},
    {bottomLeft, letter, {28, 28, 288, 44}},       {topRight, letter, {324, 748, 584, 764}},
    {bottomCenter, offOrigin, {276, 78, 536, 94}}, {topRight, offOrigin, {424, 798, 684, 814}},
};

TEST(PageMarks, ANumberStandsInABoxAtTheEdgeOfThePage) {
  for (const NumberRow& row : numberRows) {
    EXPECT_EQ(pageNumberRectangle(row.box, row.position), row.rectangle) << enumeratorName(row.position);
  }
}

PDFWatermarkConfig watermarkAt(PDFWatermarkConfig::Position position) {
  PDFWatermarkConfig config;
  config.fontSize = 50;
  config.position = position;
  return config;
}

TEST(PageMarks, AWatermarkHasABandAcrossThePage) {
  using Position = PDFWatermarkConfig::Position;
  EXPECT_EQ(watermarkBand(letter, watermarkAt(Position::center)), (PDFRectangle{0, 356, 612, 436}));
  EXPECT_EQ(watermarkBand(letter, watermarkAt(Position::top)), (PDFRectangle{0, 684, 612, 764}));
  EXPECT_EQ(watermarkBand(offOrigin, watermarkAt(Position::bottom)), (PDFRectangle{100, 78, 712, 158}));
}

TEST(PageMarks, MarginsAreTakenOffAsPercentOfTheirSide) {
  PDFCropConfig config;
  config.top = 10;
  config.right = 20;
  config.bottom = 30;
  config.left = 40;
  EXPECT_EQ(cropped({0, 0, 100, 200}, config), (PDFRectangle{40, 60, 80, 180}));
  EXPECT_EQ(cropped({10, 20, 110, 220}, config), (PDFRectangle{50, 80, 90, 200}));
}

struct SummaryRow {
  std::int64_t before;
  std::int64_t after;
  const char* summary;
};

constexpr SummaryRow summaryRows[] = {
    {2'000'000, 1'000'000, "Compressed 2 MB → 1 MB (50% smaller)."},
    {1000, 991, "Optimised for screen (1 KB → 991 bytes — already compact)."},
    {1000, 990, "Compressed 1 KB → 990 bytes (1% smaller)."},
    {1000, 2000, "Optimised for screen (1 KB → 2 KB — already compact)."},
    {0, 500, "Optimised for screen (Zero KB → 500 bytes — already compact)."},
};

TEST(PageMarks, CompressionTellsWhatItSaved) {
  for (const SummaryRow& row : summaryRows) EXPECT_EQ(compressionSummary(row.before, row.after), row.summary);
}

}  // namespace
}  // namespace quirn
