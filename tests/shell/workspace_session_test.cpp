// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shell/workspace_session.h"

#include <sys/stat.h>

#include "shell/workspace.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

struct GateRow {
  const char* losing;  // what a user would lose
  const char* operation;
  bool withFile;
  bool duringRun;
  const char* banner;
};

class Gate : public testing::TestWithParam<GateRow> {};

TEST_P(Gate, RefusesAndLeavesEverythingAsItWas) {
  const GateRow& row = GetParam();
  Workspace workspace;
  WorkspaceSession& session = *workspace.session;
  workspace.ingest({workspace.folder.file("photo.jpg", "x")});
  const auto inputs = row.withFile ? session.inputs() : std::vector<InputFile>();
  if (row.duringRun) session.attemptRun(workspace.type("fake.slow"), session.inputs());

  session.attemptRun(workspace.type(row.operation), inputs);

  ASSERT_EQ(workspace.posted.size(), 1U) << row.losing;
  EXPECT_EQ(workspace.posted.back(), row.banner) << row.losing;
  EXPECT_EQ(workspace.banners.banners().back().style, BannerStyle::warning);
  EXPECT_EQ(session.isActive(), row.duringRun);
  EXPECT_EQ(session.editing(), nullptr);
  EXPECT_EQ(session.configuring(), nullptr);
  EXPECT_EQ(session.inputs().size(), 1U);
}

INSTANTIATE_TEST_SUITE_P(
    All, Gate,
    testing::Values(
        GateRow{"a click on an empty window says what is missing", "fake.text", false, false, "Drop some files first."},
        GateRow{"and says so even while something runs", "fake.text", false, true, "Drop some files first."},
        GateRow{"a run is not disturbed by a second one", "fake.slow", true, true,
                "Wait for the current operation to finish."},
        GateRow{"that comes before whether the files fit", "fake.text", true, true,
                "Wait for the current operation to finish."},
        GateRow{"a generator waits as well", "fake.generator", false, true,
                "Wait for the current operation to finish."},
        GateRow{"files of another kind are told apart", "fake.text", true, false,
                "Text Only can't run on these files."},
        GateRow{"what isn't there yet blames no files", "fake.unbuilt", true, false, "Unbuilt isn’t built yet."},
        GateRow{"nor asks for some", "fake.unbuilt", false, false, "Unbuilt isn’t built yet."}),
    [](const auto& row) { return fmt::format("Row{}", row.index); });

TEST(WorkspaceSession, AGeneratorRunsWithoutFiles) {
  Workspace workspace;
  const std::string banner =
      workspace.nextBanner([&] { workspace.session->attemptRun(workspace.type("fake.generator"), {}); });
  EXPECT_EQ(banner, "Generator done.");
}

TEST(WorkspaceSession, TheFirstRunGoesOnWhenASecondIsRefused) {
  Workspace workspace;
  WorkspaceSession& session = *workspace.session;
  workspace.ingest({workspace.folder.file("a.txt", "x")});
  session.attemptRun(workspace.type("fake.slow"), session.inputs());
  session.attemptRun(workspace.type("fake.text"), session.inputs());
  EXPECT_EQ(session.activeName(), "Slow");
  EXPECT_NE(session.progress(), nullptr);
  EXPECT_EQ(workspace.nextBanner([&] { workspace.proceed.release(); }), "Slow done.");
  EXPECT_FALSE(session.isActive());
  EXPECT_TRUE(workspace.ranOn.empty());
}

TEST(WorkspaceSession, ACancelledRunSaysSoAndTheWindowIsFreeAgain) {
  Workspace workspace;
  WorkspaceSession& session = *workspace.session;
  workspace.ingest({workspace.folder.file("a.txt", "x")});
  session.attemptRun(workspace.type("fake.slow"), session.inputs());
  EXPECT_EQ(workspace.nextBanner([&] { session.cancelRun(); }), "Cancelled.");
  EXPECT_FALSE(session.isActive());
}

TEST(WorkspaceSession, ClosingTheWindowDuringARunEndsIt) {
  Workspace workspace;
  workspace.ingest({workspace.folder.file("a.txt", "x")});
  workspace.session->attemptRun(workspace.type("fake.slow"), workspace.session->inputs());
  workspace.session.reset();
  workspace.queue.runDue();
  EXPECT_TRUE(workspace.posted.empty());
}

TEST(WorkspaceSession, AnEditorOpensInsteadOfARun) {
  Workspace workspace;
  WorkspaceSession& session = *workspace.session;
  workspace.ingest({workspace.folder.file("a.txt", "x")});
  session.attemptRun(workspace.type("fake.editor"), session.inputs());
  ASSERT_NE(session.editing(), nullptr);
  EXPECT_EQ(session.editing()->inputs.size(), 1U);
  EXPECT_FALSE(session.isActive());
  session.completeEditing({{platform::Uuid::random(), "/signed/a (signed).txt", OutputRole::primary}});
  EXPECT_EQ(session.editing(), nullptr);
  EXPECT_EQ(session.outputs().size(), 1U);
  EXPECT_EQ(workspace.posted.back(), "Created a (signed).txt");
}

TEST(WorkspaceSession, ThePanelsValuesAreWhatRuns) {
  Workspace workspace;
  WorkspaceSession& session = *workspace.session;
  workspace.ingest({workspace.folder.file("a.txt", "x")});
  session.attemptRun(workspace.type("fake.loudness"), session.inputs());
  ASSERT_NE(session.configuring(), nullptr);
  OperationConfig& config = *session.configuring()->config;
  LoudnessConfig::panel().set(config, "loudness", "9");
  EXPECT_EQ(workspace.nextBanner([&] { session.runConfigured(); }), "Loudness 9");
  EXPECT_EQ(session.configuring(), nullptr);
}

TEST(WorkspaceSession, APanelThatIsClosedRunsNothing) {
  Workspace workspace;
  WorkspaceSession& session = *workspace.session;
  workspace.ingest({workspace.folder.file("a.txt", "x")});
  session.attemptRun(workspace.type("fake.loudness"), session.inputs());
  session.closePanel();
  session.runConfigured();
  EXPECT_FALSE(session.isActive());
}

TEST(WorkspaceSession, AFolderIsOneInputAndNothingIsAddedTwice) {
  Workspace workspace;
  fs::create_directory(workspace.folder.path() / "album");
  workspace.folder.file("album/1.jpg", "x");
  const fs::path file = workspace.folder.file("a.txt", "four");
  workspace.ingest({workspace.folder.path() / "album", file});
  ASSERT_EQ(workspace.session->inputs().size(), 2U);
  EXPECT_TRUE(workspace.session->inputs()[0].isDirectory);
  EXPECT_EQ(workspace.session->inputs()[1].size, 4);
  EXPECT_EQ(workspace.nextBanner([&] { workspace.session->ingest({file}); }), "Nothing to ingest.");
  EXPECT_EQ(workspace.session->inputs().size(), 2U);
}

TEST(WorkspaceSession, FilesStandInTheOrderInWhichTheyCame) {
  Workspace workspace;
  std::vector<fs::path> files;
  for (int i = 0; i < 50; ++i) files.push_back(workspace.folder.file(fmt::format("{}.txt", i), "x"));
  for (const fs::path& file : files) workspace.session->ingest({file});
  workspace.wait([&] { return workspace.session->inputs().size() == files.size(); });
  for (std::size_t i = 0; i < files.size(); ++i) EXPECT_EQ(workspace.session->inputs().at(i).url, files[i]);
}

TEST(WorkspaceSession, WhatCantBeReadIsNamed) {
  Workspace workspace;
  WorkspaceSession& session = *workspace.session;
  EXPECT_EQ(workspace.nextBanner([&] { session.ingest({}); }), "Nothing to ingest.");
  EXPECT_EQ(workspace.nextBanner([&] { session.ingest({"/gone/a", "/gone/b", "/gone/c", "/gone/d"}); }),
            "Couldn't read a, b, c, +1 more.");
  const fs::path pipe = workspace.folder.path() / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(workspace.nextBanner([&] { session.ingest({pipe}); }), "Couldn't read pipe.");
}

TEST(WorkspaceSession, ARequestIsCheckedAndRunsOnItsOwnFilesAlone) {
  Workspace workspace;
  WorkspaceSession& session = *workspace.session;
  const fs::path file = workspace.folder.file("b.txt", "x");
  workspace.ingest({workspace.folder.file("a.txt", "x")});
  const auto request = [&](std::string operation, std::vector<fs::path> files) {
    return workspace.nextBanner(
        [&] { workspace.events.post(notifications::runOpOnURLs, {std::move(operation), std::move(files)}); });
  };
  EXPECT_EQ(request("fake.nothing", {}), "Nothing to open.");
  EXPECT_EQ(request("fake.nothing", {file}), "Quirn doesn’t have that operation.");
  EXPECT_EQ(request("fake.text", {file}), "Text Only done.");
  EXPECT_EQ(workspace.ranOn, std::vector<std::string>{"b.txt"});
  EXPECT_EQ(session.inputs().size(), 2U);
  // All files together are what was asked for: with one missing, nothing is made of the others.
  EXPECT_EQ(request("fake.text", {file, "/gone/c.txt"}), "Couldn't read c.txt.");
  EXPECT_EQ(workspace.ranOn.size(), 1U);
}

// --- pasted images and scans ---------------------------------------------------------------------

std::string chunk(std::string_view type, std::string_view content) {
  const auto length = static_cast<char>(content.size());
  return std::string{0, 0, 0, length}.append(type).append(content).append("crc!");
}

std::string png() {
  return std::string("\x89PNG\r\n\x1A\n") + chunk("IHDR", std::string_view("\0\0\0\1\0\0\0\1\x08\0\0\0\0", 13)) +
         chunk("IDAT", "data") + chunk("IEND", "");
}

std::vector<std::byte> bytesOf(std::string_view text) {
  const auto bytes = std::as_bytes(std::span(text));
  return {bytes.begin(), bytes.end()};
}

TEST(WorkspaceSession, TwoPastesInOneSecondAreTwoFiles) {
  Workspace workspace;
  workspace.pasteboard.image = bytesOf(png());
  for (int i = 0; i < 2; ++i) workspace.events.post(notifications::paste);
  workspace.wait([&] { return workspace.session->inputs().size() == 2; });
  const std::string first = workspace.session->inputs().at(0).stem();
  EXPECT_TRUE(first.starts_with("Pasted 2023-11-1")) << first;
  EXPECT_NE(first.find(" at "), std::string::npos);
  EXPECT_EQ(workspace.session->inputs().at(1).stem(), first + " (1)");
  EXPECT_EQ(workspace.session->inputs().at(0).url.parent_path().filename(), "Quirn Pasted");
  EXPECT_EQ(workspace.session->inputs().at(0).size, std::ssize(png()));
}

TEST(WorkspaceSession, AnImageThatIsNoWholePNGIsRefused) {
  Workspace workspace;
  for (const std::string& bad : {std::string(), std::string("\xFF\xD8\xFF jpeg"), png().substr(0, png().size() - 5),
                                 png().substr(0, 8) + chunk("IHDR", "short") + chunk("IDAT", "") + chunk("IEND", "")}) {
    workspace.pasteboard.image = bytesOf(bad);
    EXPECT_EQ(workspace.nextBanner([&] { workspace.session->paste(); }), "Couldn't read the pasted image.");
  }
  workspace.pasteboard.image.reset();
  EXPECT_EQ(workspace.nextBanner([&] { workspace.session->paste(); }), "Nothing to ingest.");
}

TEST(WorkspaceSession, AScanIsKeptByWhatItIs) {
  Workspace workspace;
  workspace.events.post(notifications::scanReceived, Scan{bytesOf("%PDF-1.7\n")});
  workspace.events.post(notifications::scanReceived, Scan{bytesOf(png())});
  workspace.wait([&] { return workspace.session->inputs().size() == 2; });
  EXPECT_EQ(workspace.session->inputs().at(0).extension(), "pdf");
  EXPECT_EQ(workspace.session->inputs().at(1).extension(), "png");
  EXPECT_EQ(workspace.session->inputs().at(0).url.parent_path().filename(), "Quirn Scans");
  EXPECT_EQ(workspace.nextBanner([&] { workspace.session->receive(Scan{bytesOf("nothing")}); }),
            "Couldn't read the scan.");
}

TEST(WorkspaceSession, APastedImageWithoutAPlaceSaysSo) {
  Workspace workspace;
  workspace.pasteboard.image = bytesOf(png());
  workspace.folder.file("Quirn Pasted", "a file where the folder should be");
  const std::string banner = workspace.nextBanner([&] { workspace.session->paste(); });
  EXPECT_TRUE(banner.starts_with("Couldn't write Pasted ")) << banner;
}

// --- the output folder ---------------------------------------------------------------------------

TEST(WorkspaceSession, TheOutputFolderIsShownAndRemembered) {
  Workspace workspace;
  WorkspaceSession& session = *workspace.session;
  EXPECT_EQ(session.outputDirectoryLine(), "Outputs will save next to original files.");
  EXPECT_EQ(session.outputDirectoryLabel(), "Next to original files");
  const fs::path sums = workspace.folder.path() / "sums";
  fs::create_directory(sums);
  session.chooseOutputDirectory(sums);
  EXPECT_EQ(session.outputDirectoryLine(), "Outputs will save to " + sums.string());
  EXPECT_EQ(session.outputDirectoryLabel(), "sums");
  EXPECT_EQ(OutputDirectoryStore(platform::Preferences::at(workspace.preferences)).load(), sums);
  session.resetOutputDirectory();
  EXPECT_EQ(OutputDirectoryStore(platform::Preferences::at(workspace.preferences)).load(), std::nullopt);
}

TEST(WorkspaceSession, AFolderThatCantBeRememberedIsUsedAllTheSame) {
  Workspace workspace;
  workspace.folder.file("preferences", "a file where a folder should be");
  workspace.session->chooseOutputDirectory(workspace.folder.path());
  EXPECT_EQ(workspace.posted.back(), "Couldn't remember the output folder.");
  EXPECT_EQ(workspace.session->outputDirectory(), workspace.folder.path());
}

}  // namespace
}  // namespace quirn::tests
