// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shell/window_start.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

#include "shell/desktop_actions.h"
#include "shell/file_kind.h"
#include "support/runs.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

using platform::SingleInstance;
using testing::ElementsAre;

TEST(WindowRequest, ComesBackAsItWasSent) {
  const WindowRequest sent{
      .activationToken = "token", .operationID = "pdf.merge", .locations = {"/a b", "/\xff\n", ""}};
  const WindowRequest got = WindowRequest::decoded(sent.encoded());
  EXPECT_EQ(got.activationToken, "token");
  EXPECT_EQ(got.operationID, "pdf.merge");
  EXPECT_EQ(got.locations, sent.locations);
}

TEST(WindowRequest, AnyTextIsSomeRequest) {
  for (const std::string_view text : {"", "x", "x\0y"}) EXPECT_TRUE(WindowRequest::decoded(text).locations.empty());
}

TEST(WindowRequest, PathsAreMadeAbsoluteAndLinksKept) {
  const std::vector<std::string> words{"a.txt", "quirn://open?path=/b", "file:///c%20d"};
  const WindowRequest request = windowRequest(words, "");
  EXPECT_EQ(request.locations[0], located("a.txt").string());
  EXPECT_EQ(request.locations[1], words[1]);
  EXPECT_EQ(request.locations[2], words[2]);
}

class Inbox {
 public:
  void put(std::string message) {
    const std::scoped_lock guard(mutex_);
    messages_.push_back(std::move(message));
    changed_.notify_all();
  }
  std::vector<std::string> waitFor(std::size_t count) {
    std::unique_lock guard(mutex_);
    changed_.wait_for(guard, std::chrono::seconds(30), [&] { return messages_.size() >= count; });
    return messages_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  std::vector<std::string> messages_;
};

TEST(SingleInstance, TheSecondHandsToTheFirst) {
  const TemporaryFolder folder;
  Inbox inbox;
  const auto first = SingleInstance::claim(folder.path(), "quirn-:0");
  ASSERT_NE(first, nullptr);
  first->listen([&](std::string message) { inbox.put(std::move(message)); });
  EXPECT_EQ(SingleInstance::claim(folder.path(), "quirn-:0"), nullptr);
  const std::string large(3'000'000, 'x');
  EXPECT_TRUE(SingleInstance::handOver(folder.path(), "quirn-:0", "one"));
  EXPECT_TRUE(SingleInstance::handOver(folder.path(), "quirn-:0", large));
  EXPECT_THAT(inbox.waitFor(2), ElementsAre("one", large));
  EXPECT_FALSE(SingleInstance::handOver(folder.path(), "quirn-:1", "another display has another window"));
}

TEST(SingleInstance, AfterTheFirstHasGoneTheNextTakesItsPlace) {
  const TemporaryFolder folder;
  SingleInstance::claim(folder.path(), "q").reset();
  EXPECT_FALSE(SingleInstance::handOver(folder.path(), "q", "nobody is there"));
  // As one that was killed leaves it.
  folder.file("q.socket", "");
  EXPECT_NE(SingleInstance::claim(folder.path(), "q"), nullptr);
}

TEST(DesktopActions, AreCalledAfterTheirTitles) {
  EXPECT_EQ(operationOfAction("merge-pdfs"), "pdf.merge");
  EXPECT_EQ(operationOfAction("open-in-quirn"), "");
  EXPECT_EQ(operationOfAction("nonsense"), "");
}

TEST(FileKind, IsWhatAPersonCallsIt) {
  const auto text = [](const char* name, const char* mime, bool isFolder = false) {
    return fileKindText({.url = name, .contentType = ContentType(mime), .isDirectory = isFolder});
  };
  EXPECT_EQ(text("/a.pdf", "application/pdf"), "PDF document");
  EXPECT_EQ(text("/a.JPG", "image/jpeg"), "JPG image");
  EXPECT_EQ(text("/a.json", "application/json"), "JSON file");
  EXPECT_EQ(text("/scan", "image/png"), "Image");
  EXPECT_EQ(text("/a.reallylong", "application/octet-stream"), "File");
  EXPECT_EQ(text("/a.pdf", "inode/directory", true), "Folder");
}

}  // namespace
}  // namespace quirn::tests
