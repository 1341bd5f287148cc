// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QClipboard>
#include <QMessageBox>
#include <QPushButton>
#include <filesystem>
#include <fstream>

#include "window/window_under_test.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(Window, DroppedFilesAreListedWithWhatFitsThem) {
  WindowUnderTest test;
  EXPECT_TRUE(test.find("dropArea")->isVisible());
  ASSERT_TRUE(test.dropAndWait({test.folder.file("notes.txt", "x"), test.folder.file("a.pdf", "%PDF-")}));
  EXPECT_THAT(test.titles("inputs"), ElementsAre("notes.txt", "a.pdf"));
  EXPECT_THAT(test.titles("operations"), Contains("Hash Files"));
  EXPECT_THAT(test.titles("operations"), Not(Contains("Merge PDFs")));
  EXPECT_FALSE(test.find("dropArea")->isVisible());
  ASSERT_TRUE(test.click("clearFiles"));
  EXPECT_TRUE(test.find("dropArea")->isVisible());
}

TEST(Window, NamesOfAnyBytesAreShownAndWorkedOn) {
  WindowUnderTest test;
  const fs::path odd = test.folder.file("caf\xe9 \n50% #1.txt", "x");
  ASSERT_TRUE(test.dropAndWait({odd}));
  EXPECT_EQ(test.session().inputs().front().url, odd);
  EXPECT_THAT(test.titles("inputs").front(), HasSubstr("50% #1.txt"));
}

TEST(Window, FromTheDropToTheResultsAndOnWithThem) {
  WindowUnderTest test;
  ASSERT_TRUE(test.dropAndWait({test.folder.file("a.bin", "abc"), test.folder.file("b.bin", "")}));
  ASSERT_TRUE(test.choose("operations", "Hash Files"));
  ASSERT_TRUE(test.find("options")->isVisible());
  for (auto* const each : test.find("options")->findChildren<QPushButton*>()) {
    if (each->text() == "MD5") each->click();
  }
  ASSERT_TRUE(test.click("run"));
  ASSERT_TRUE(test.wait([&] { return !test.session().isActive() && !test.session().outputs().empty(); }));
  EXPECT_FALSE(test.find("options")->isVisible());
  EXPECT_THAT(test.titles("outputs"), testing::UnorderedElementsAre("a (checksums).txt", "b (checksums).txt"));
  // RFC 1321, A.5
  EXPECT_THAT(contentOf(test.folder / "a (checksums).txt"), HasSubstr("900150983cd24fb0d6963f7d28e17f72"));
  EXPECT_THAT(test.bannerTexts(), Contains(testing::AllOf(HasSubstr("Created "), HasSubstr("a (checksums).txt"))))
      << "in the order in which the files were done";

  ASSERT_TRUE(test.click("useAsInput"));
  ASSERT_TRUE(test.wait([&] { return test.session().inputs().front().extension() == "txt"; }));
  EXPECT_EQ(test.session().inputs().size(), 2U) << "several outputs go on at once";
}

TEST(Window, TheCommandThatIsCopiedDoesTheSame) {
  WindowUnderTest test;
  const fs::path file = test.folder.file("it's.bin", "x");
  ASSERT_TRUE(test.dropAndWait({file}));
  ASSERT_TRUE(test.choose("operations", "Hash Files"));
  ASSERT_TRUE(test.click("copyAsCommand"));
  const std::string command = QGuiApplication::clipboard()->text().toStdString();
  EXPECT_THAT(command, testing::StartsWith("quirn run text.hash-files '"));
  EXPECT_THAT(command, testing::EndsWith("it'\\''s.bin'"));
}

TEST(Window, ARunShowsWhatItDoesAndIsCancelled) {
  WindowUnderTest test;
  ASSERT_TRUE(test.dropAndWait({test.folder.file("a.txt", "x")}));
  ASSERT_TRUE(test.choose("operations", "Slow"));
  EXPECT_TRUE(test.find("progress")->isVisible());
  ASSERT_TRUE(test.dropAndWait({test.folder.file("b.txt", "y")})) << "files may come during a run";
  ASSERT_TRUE(test.choose("operations", "Hash Files"));
  EXPECT_THAT(test.bannerTexts(), ElementsAre("Wait for the current operation to finish."));
  ASSERT_TRUE(test.click("cancelRun"));
  ASSERT_TRUE(test.wait([&] { return !test.session().isActive(); }));
  EXPECT_FALSE(test.find("progress")->isVisible());
  EXPECT_THAT(test.bannerTexts(), Contains("Cancelled."));
}

TEST(Window, ClosingDuringARunAsksAndThenCancels) {
  WindowUnderTest test;
  bool isClosed = false;
  test.window().whenClosed = [&] { isClosed = true; };
  ASSERT_TRUE(test.dropAndWait({test.folder.file("a.txt", "x")}));
  ASSERT_TRUE(test.choose("operations", "Slow"));
  const auto question = [&] { return test.window().findChild<QMessageBox*>("closeQuestion"); };
  EXPECT_FALSE(test.window().close());
  ASSERT_NE(question(), nullptr);
  question()->buttons().at(1)->click();  // Keep Running
  ASSERT_TRUE(test.wait([&] { return question() == nullptr; }));
  EXPECT_TRUE(test.session().isActive());
  test.window().close();
  ASSERT_NE(question(), nullptr);
  for (QAbstractButton* const each : question()->buttons()) {
    if (each->text() == "Stop and Close") each->click();
  }
  ASSERT_TRUE(test.wait([&] { return isClosed; }));
  EXPECT_FALSE(test.session().isActive());
}

TEST(Window, FilesThatVanishAreToldAndTheOthersAreDone) {
  WindowUnderTest test;
  const fs::path gone = test.folder.file("gone.bin", "x");
  ASSERT_TRUE(test.dropAndWait({gone, test.folder.file("here.bin", "y")}));
  fs::remove(gone);
  ASSERT_TRUE(test.choose("operations", "Hash Files"));
  ASSERT_TRUE(test.click("run"));
  ASSERT_TRUE(test.wait([&] { return !test.session().outputs().empty(); }));
  EXPECT_THAT(test.bannerTexts(), Contains("Created 1 of 2. 1 couldn’t be processed: gone.bin."));
}

TEST(Window, TwentyThousandFilesAreListedAndTakenOff) {
  constexpr int count = 20'000;
  WindowUnderTest test;
  std::vector<fs::path> files;
  for (int i = 0; i < count; ++i) files.push_back(test.folder.file(fmt::format("f{}.txt", i), ""));
  ASSERT_TRUE(test.dropAndWait(files));
  EXPECT_EQ(test.list("inputs")->model()->rowCount(), count);
  test.list("inputs")->selectAll();
  test.press(test.list("inputs"), Qt::Key_Delete);
  EXPECT_TRUE(test.session().inputs().empty());
}

TEST(Window, PastedFilesImagesAndGarbage) {
  WindowUnderTest test;
  const auto paste = [&](QMimeData* data) {
    QGuiApplication::clipboard()->setMimeData(data);
    test.application->events().post(notifications::paste);
  };
  auto files = std::make_unique<QMimeData>();
  files->setUrls({window::urlOf(test.folder.file("a.txt", "x"))});
  paste(files.release());
  ASSERT_TRUE(test.wait([&] { return test.session().inputs().size() == 1; }));

  auto image = std::make_unique<QMimeData>();
  QImage picture(2, 2, QImage::Format_RGB32);
  picture.fill(Qt::red);
  image->setImageData(picture);
  paste(image.release());
  ASSERT_TRUE(test.wait([&] { return test.session().inputs().size() == 2; }));
  EXPECT_EQ(test.session().inputs().back().extension(), "png");

  auto garbage = std::make_unique<QMimeData>();
  garbage->setData("image/png", "\x89PNG no more");
  paste(garbage.release());
  EXPECT_THAT(test.bannerTexts(), Contains("Couldn't read the pasted image."));
  EXPECT_EQ(test.session().inputs().size(), 2U);
}

TEST(Window, TheFolderForOutputsIsShownAndPutBack) {
  WindowUnderTest test;
  test.session().chooseOutputDirectory(test.folder.folder("out"));
  const auto line = [&] { return test.window().findChild<QLabel*>("folderLine")->text().toStdString(); };
  EXPECT_EQ(line(), "Outputs will save to " + (test.folder / "out").string());
  ASSERT_TRUE(test.click("resetFolder"));
  EXPECT_EQ(line(), "Outputs will save next to original files.");
}

}  // namespace
}  // namespace quirn::tests
