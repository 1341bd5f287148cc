// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QClipboard>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

#include "window/list_row.h"
#include "window/window_under_test.h"

namespace quirn::tests {
namespace {

using testing::Contains;
using testing::HasSubstr;
using testing::StartsWith;

class Palette : public testing::Test {
 protected:
  void open(const QString& text) {
    test.application->events().post(notifications::openPalette);
    test.type(field(), text);
  }
  QLineEdit* field() { return test.window().findChild<QLineEdit*>("paletteField"); }
  std::string detailOf(const std::string& title) {
    const QAbstractItemModel* const model = test.list("paletteList")->model();
    for (int row = 0; row < model->rowCount(); ++row) {
      const QModelIndex index = model->index(row, 0);
      if (index.data().toString().toStdString() == title)
        return index.data(window::detailRole).toString().toStdString();
    }
    return "not found";
  }
  WindowUnderTest test;
};

TEST_F(Palette, AFewLettersAndReturnOpenAnOperation) {
  ASSERT_TRUE(test.dropAndWait({test.folder.file("a.txt", "x")}));
  open("checksum");
  EXPECT_EQ(test.titles("paletteList").front(), "Hash Files");
  test.press(field(), Qt::Key_Return);
  EXPECT_FALSE(test.find("palette")->isVisible());
  ASSERT_NE(test.session().configuring(), nullptr);
  EXPECT_EQ(test.session().configuring()->opType->info().operationID, "text.hash-files");
}

TEST_F(Palette, WhatDoesntFitIsFoundAndSaysWhyNot) {
  ASSERT_TRUE(test.dropAndWait({test.folder.file("a.txt", "x")}));
  open("merge pdf");
  EXPECT_THAT(detailOf("Merge PDFs"), StartsWith("Needs two or more PDFs"));
  open("base64");
  EXPECT_EQ(detailOf("Base64"), "Works without files.");
}

TEST_F(Palette, EscapeClosesItAndNothingHasHappened) {
  open("hash");
  test.press(field(), Qt::Key_Escape);
  EXPECT_FALSE(test.find("palette")->isVisible());
  EXPECT_EQ(test.session().configuring(), nullptr);
}

class WorkbenchInWindow : public testing::Test {
 protected:
  void open(const char* tool, std::vector<InputFile> inputs = {}) {
    test.session().attemptRun(test.type(tool), std::move(inputs));
    WindowUnderTest::turn();
  }
  QPlainTextEdit* pane(const char* name) { return test.window().findChild<QPlainTextEdit*>(name); }
  bool clickText(const QString& text) {
    for (auto* const each : test.find("workbench")->findChildren<QPushButton*>()) {
      if (each->text() == text && each->isVisible()) return each->click(), true;
    }
    return false;
  }
  WindowUnderTest test;
};

TEST_F(WorkbenchInWindow, TheOutputFollowsWhatIsTyped) {
  open("dev.base64");
  pane("input")->setPlainText("Grüße");
  EXPECT_EQ(pane("output")->toPlainText(), "R3LDvMOfZQ==");  // RFC 4648 of the bytes in UTF-8
  ASSERT_TRUE(clickText("Copy"));
  EXPECT_EQ(QGuiApplication::clipboard()->text(), "R3LDvMOfZQ==");
  EXPECT_THAT(test.bannerTexts(), Contains("Copied to clipboard."));
  ASSERT_TRUE(clickText("Clear"));
  EXPECT_TRUE(pane("input")->toPlainText().isEmpty());
  ASSERT_TRUE(clickText("Sample"));
  EXPECT_FALSE(pane("output")->toPlainText().isEmpty());
}

TEST_F(WorkbenchInWindow, AMistakeIsTheToolsOwnSentence) {
  open("dev.json");
  pane("input")->setPlainText("{");
  EXPECT_TRUE(test.find("error")->isVisible());
  EXPECT_TRUE(pane("output")->toPlainText().isEmpty());
}

TEST_F(WorkbenchInWindow, AGeneratorHasNoInputAndBeginsAtOnce) {
  open("dev.uuid");
  EXPECT_EQ(pane("input"), nullptr);
  const QString first = pane("output")->toPlainText();
  EXPECT_FALSE(first.isEmpty());
  ASSERT_TRUE(clickText("Regenerate"));
  EXPECT_NE(pane("output")->toPlainText(), first);
}

TEST_F(WorkbenchInWindow, ASavedFileLiesBesideItsSeedAmongTheResults) {
  ASSERT_TRUE(test.dropAndWait({test.folder.file("data.json", "[1]")}));
  open("dev.json", test.session().inputs());
  EXPECT_EQ(pane("input")->toPlainText(), "[1]");
  ASSERT_TRUE(clickText("Save File"));
  EXPECT_EQ(test.session().editing(), nullptr);
  EXPECT_EQ(test.titles("outputs"), std::vector<std::string>{"data (1).json"});
}

TEST_F(WorkbenchInWindow, BackLeadsToTheFiles) {
  open("dev.slug");
  ASSERT_TRUE(test.click("closeTool"));
  EXPECT_EQ(test.session().editing(), nullptr);
  EXPECT_TRUE(test.find("operations")->isVisible());
}

}  // namespace
}  // namespace quirn::tests
