// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/readable_file.h"

#include <sys/stat.h>
#include <unistd.h>

#include <system_error>

#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;
using platform::ReadableFile;

std::string nextBytes(ReadableFile& file, std::size_t count) {
  std::string bytes(count, '\0');
  bytes.resize(file.read(std::as_writable_bytes(std::span(bytes))));
  return bytes;
}

int errorOf(const std::function<void()>& action) {
  try {
    action();
  } catch (const std::system_error& error) {
    return error.code().value();
  }
  return 0;
}

TEST(ReadableFile, GivesItsBytesAndThenNone) {
  TemporaryFolder folder;
  ReadableFile file = ReadableFile::open(folder.file("a", "content"));
  EXPECT_EQ(file.size(), 7);
  EXPECT_EQ(nextBytes(file, 4), "cont");
  EXPECT_EQ(nextBytes(file, 4), "ent");
  EXPECT_EQ(nextBytes(file, 4), "");
  EXPECT_EQ(nextBytes(file, 0), "");
  ReadableFile empty = ReadableFile::open(folder.file("b", ""));
  EXPECT_EQ(nextBytes(empty, 4), "");
}

TEST(ReadableFile, DoesNotTakeAFileThatWasCutForAShortOne) {
  TemporaryFolder folder;
  const fs::path path = folder.file("a", "content");
  ReadableFile file = ReadableFile::open(path);
  EXPECT_EQ(nextBytes(file, 4), "cont");
  ASSERT_EQ(::truncate(path.c_str(), 4), 0);
  EXPECT_EQ(errorOf([&] { nextBytes(file, 4); }), EIO);
}

TEST(ReadableFile, GivesAllOfAFileThatGrows) {
  TemporaryFolder folder;
  const fs::path path = folder.file("a", "content");
  ReadableFile file = ReadableFile::open(path);
  folder.file("a", "content and more");
  EXPECT_EQ(nextBytes(file, 100), "content and more");
}

TEST(ReadableFile, RefusesWhatIsNoRegularFileWithoutOpeningIt) {
  TemporaryFolder folder;
  // Opening a pipe that nobody writes to would never return.
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
  fs::create_symlink("pipe", folder / "link");
  fs::create_symlink("loop", folder / "loop");
  const std::vector<std::pair<fs::path, int>> rows{{folder / "pipe", ENOTSUP}, {folder / "link", ENOTSUP},
                                                   {folder.path(), ENOTSUP},   {"/dev/null", ENOTSUP},
                                                   {folder / "loop", ELOOP},   {folder / "gone", ENOENT}};
  for (const auto& [path, expected] : rows) {
    EXPECT_EQ(errorOf([&] { ReadableFile::open(path); }), expected) << path;
    if (path.parent_path() != folder.path()) continue;
    EXPECT_EQ(errorOf([&] { ReadableFile::openBeneath(folder.path(), path.filename()); }), expected) << path;
  }
}

TEST(ReadableFile, StaysBeneathTheFolder) {
  TemporaryFolder folder;
  folder.file("secret", "secret");
  folder.file("in/a", "content");
  fs::create_symlink("../secret", folder / "in/out");
  fs::create_symlink(folder / "in/a", folder / "in/absolute");
  fs::create_symlink("a", folder / "in/link");
  for (const char* name : {"../secret", "out", "/etc/passwd", "absolute"}) {
    EXPECT_EQ(errorOf([&] { ReadableFile::openBeneath(folder / "in", name); }), EXDEV) << name;
  }
  ReadableFile linked = ReadableFile::openBeneath(folder / "in", "link");
  EXPECT_EQ(nextBytes(linked, 100), "content");
}

}  // namespace
}  // namespace quirn::tests
