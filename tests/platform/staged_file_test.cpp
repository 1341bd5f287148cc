// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/staged_file.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;
using platform::FileDescriptor;
using platform::OutputFolder;
using platform::StagedFile;
using Names = std::vector<std::string>;

std::vector<std::string> visibleNamesIn(const fs::path& folder) {
  Names names = namesIn(folder);
  std::erase_if(names, [](const std::string& name) { return name.starts_with(".quirn-"); });
  return names;
}

class StagedFiles : public testing::TestWithParam<StagedFile::Staging> {
 protected:
  StagedFile stage(std::string_view content) const {
    StagedFile file = StagedFile::create(open_, GetParam());
    platform::writeAll(file.descriptor(), std::as_bytes(std::span(content)));
    return file;
  }
  const fs::path& folder() const { return folder_.path(); }
  const OutputFolder& open() const { return *open_; }
  const TemporaryFolder& files() const { return folder_; }

 private:
  TemporaryFolder folder_;
  std::shared_ptr<const OutputFolder> open_ = std::make_shared<OutputFolder>(folder_.path());
};

TEST_P(StagedFiles, AppearUnderTheirNameOnlyWhenTheyArePublished) {
  {
    StagedFile file = stage("content");
    EXPECT_TRUE(visibleNamesIn(folder()).empty());
    EXPECT_EQ(file.flush(), std::error_code());
    EXPECT_TRUE(file.publishAs("line\nbreak \xFF"));
    EXPECT_EQ(namesIn(folder()), Names{"line\nbreak \xFF"});
  }
  EXPECT_EQ(contentOf(folder() / "line\nbreak \xFF"), "content");
}

TEST_P(StagedFiles, HaveThePermissionsOfAnyNewFile) {
  const mode_t before = ::umask(027);
  stage("").publishAs("new");
  ::umask(before);
  EXPECT_EQ(fs::status(folder() / "new").permissions(), fs::perms(0640));
}

TEST_P(StagedFiles, NeverReplaceAnything) {
  files().file("file", "theirs");
  files().folder("folder");
  fs::create_symlink("nowhere", folder() / "link");
  StagedFile file = stage("ours");
  for (const char* name : {"file", "folder", "link"}) EXPECT_FALSE(file.publishAs(name)) << name;
  EXPECT_EQ(contentOf(folder() / "file"), "theirs");
  EXPECT_TRUE(file.publishAs("free")) << "a refused name spoils the file";
  EXPECT_EQ(contentOf(folder() / "free"), "ours");
  EXPECT_EQ(namesIn(folder()), (Names{"file", "folder", "free", "link"}));
}

TEST_P(StagedFiles, AreGoneWhenTheyAreDropped) {
  {
    const StagedFile file = stage("content");
  }
  {
    StagedFile file = stage("content");
    const StagedFile moved = std::move(file);
  }
  EXPECT_TRUE(namesIn(folder()).empty());
}

TEST_P(StagedFiles, SurviveASweepWhileTheyAreMade) {
  StagedFile file = stage("content");
  open().sweepLeftovers();
  OutputFolder(folder()).sweepLeftovers();
  EXPECT_TRUE(file.publishAs("whole"));
  EXPECT_EQ(contentOf(folder() / "whole"), "content");
}

TEST_P(StagedFiles, AreFlushedTogetherHoweverMany) {
  for (const std::size_t count : {0U, 1U, 40U}) {
    std::vector<StagedFile> staged;
    for (std::size_t i = 0; i < count; ++i) staged.push_back(stage("content"));
    std::vector<const StagedFile*> pointers;
    for (const StagedFile& file : staged) pointers.push_back(&file);
    EXPECT_EQ(platform::flushAll(pointers), std::vector<std::error_code>(count));
  }
}

INSTANTIATE_TEST_SUITE_P(InEveryWay, StagedFiles,
                         testing::Values(StagedFile::Staging::unnamedWherePossible, StagedFile::Staging::hiddenSibling),
                         [](const auto& test) {
                           return test.param == StagedFile::Staging::hiddenSibling ? "hidden" : "unnamed";
                         });

TEST(OutputFolder, IsSweptOfWhatKilledProgramsLeftAndOfNothingElse) {
  TemporaryFolder folder;
  const std::string uuid = "0b8d0c0a-1f6e-4f57-8f0b-6f5c1d2e3f40";
  const auto left = [&](std::string_view end) { return ".quirn-" + uuid + std::string(end); };
  folder.file(left(".partial"), "abandoned");
  folder.file(left(".partial.txt"), "foreign");
  folder.file(left(""), "foreign");
  folder.file(".quirn-notes.partial", "foreign");
  folder.file(".quirn-my notes of the year 2024, part one.partial", "as long as ours");
  folder.file("quirn-" + uuid + ".partial", "foreign");
  const std::string held = ".quirn-ffffffff-1f6e-4f57-8f0b-6f5c1d2e3f40.partial";
  const FileDescriptor holder(::open(folder.file(held, "held").c_str(), O_RDONLY | O_CLOEXEC));
  ASSERT_EQ(::flock(holder.number(), LOCK_EX), 0);
  const std::string pipe = ".quirn-eeeeeeee-1f6e-4f57-8f0b-6f5c1d2e3f40.partial";
  ASSERT_EQ(::mkfifo((folder / pipe).c_str(), 0600), 0);
  Names expected = namesIn(folder.path());
  std::erase(expected, left(".partial"));
  OutputFolder(folder.path()).sweepLeftovers();
  EXPECT_EQ(namesIn(folder.path()), expected);
}

TEST(OutputFolder, IsMadeWithItsParentsOrRefused) {
  TemporaryFolder folder;
  EXPECT_NO_THROW(OutputFolder(folder / "a/b/c").flush());
  const fs::path file = folder.file("file", "");
  fs::create_symlink("nowhere", folder / "dangling");
  fs::create_symlink("loop", folder / "loop");
  for (const fs::path& path : {file, file / "below", folder / "dangling", folder / "loop"})
    EXPECT_THROW(OutputFolder{path}, std::system_error) << path;
}

}  // namespace
}  // namespace quirn::tests
