// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_geometry.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quirn::platform {
namespace {

struct Row {
  const char* sentence;
  PDFPageView page;
  PDFRectangle target;
  PDFRectangle box;  // where the page's box comes to stand, worked out by hand
};

// A page of 100 x 200 with a cell of 300 x 300 has its centre at 150, 150.
const Row rows[] = {
    {"a page smaller than its cell keeps its size, in the middle",
     {{0, 0, 100, 200}},
     {0, 0, 300, 300},
     {100, 50, 200, 250}},
    {"a page larger than its cell shrinks to fit its height", {{0, 0, 100, 200}}, {0, 0, 100, 100}, {25, 0, 75, 100}},
    {"a page larger than its cell shrinks to fit its width", {{0, 0, 100, 200}}, {0, 0, 50, 900}, {0, 400, 50, 500}},
    {"a box off the origin is moved", {{70, -30, 170, 170}}, {0, 0, 300, 300}, {100, 50, 200, 250}},
    {"a cell off the origin is where the page goes", {{0, 0, 100, 200}}, {10, 20, 310, 320}, {110, 70, 210, 270}},
    {"a page on its side needs the width of its height", {{0, 0, 100, 200}, 90}, {0, 0, 300, 300}, {50, 100, 250, 200}},
    {"a page upside down takes the same place", {{0, 0, 100, 200}, 180}, {0, 0, 300, 300}, {100, 50, 200, 250}},
    {"a page with a unit of two points is twice as large",
     {{0, 0, 100, 200}, 0, 2},
     {0, 0, 800, 800},
     {300, 200, 500, 600}},
    {"a page with a unit of two points is fitted as such",
     {{0, 0, 100, 200}, 0, 2},
     {0, 0, 300, 300},
     {75, 0, 225, 300}},
};

TEST(PDFGeometry, DrawsAPageInTheMiddleOfItsTargetAndNeverLarger) {
  for (const Row& row : rows) {
    const PDFRectangle box = drawingTransform(row.page, row.target).apply(row.page.box);
    EXPECT_NEAR(box.left, row.box.left, 1e-9) << row.sentence;
    EXPECT_NEAR(box.bottom, row.box.bottom, 1e-9) << row.sentence;
    EXPECT_NEAR(box.right, row.box.right, 1e-9) << row.sentence;
    EXPECT_NEAR(box.top, row.box.top, 1e-9) << row.sentence;
  }
}

struct TurnedRow {
  int rotation;
  PDFPoint corner;  // where the upper left corner of the shown page is in the page's own plane
};

// A turn is clockwise: at 90 degrees the lower left corner of the page is shown at the upper left.
const TurnedRow turnedRows[] = {{0, {10, 220}}, {90, {10, 20}}, {180, {110, 20}}, {270, {110, 220}}, {-90, {110, 220}}};

TEST(PDFGeometry, MapsWhatAReaderSeesToAPageThatIsTurned) {
  for (const TurnedRow& row : turnedRows) {
    const PDFPageView page{{10, 20, 110, 220}, row.rotation};
    const PDFRectangle shown = uprightBox(page);
    const PDFPoint corner = uprightTransform(page).apply(PDFPoint{shown.left, shown.top});
    EXPECT_NEAR(corner.x, row.corner.x, 1e-9) << row.rotation;
    EXPECT_NEAR(corner.y, row.corner.y, 1e-9) << row.rotation;
    EXPECT_EQ(shown.width(), row.rotation % 180 == 0 ? 100 : 200) << row.rotation;
  }
}

TEST(PDFGeometry, RectanglesThatDontMeetHaveNothingInCommon) {
  EXPECT_TRUE((PDFRectangle{0, 0, 10, 10}.intersection({20, 20, 30, 30}).isEmpty()));
  EXPECT_EQ((PDFRectangle{0, 0, 10, 10}.intersection({5, 6, 30, 30})), (PDFRectangle{5, 6, 10, 10}));
}

}  // namespace
}  // namespace quirn::platform
