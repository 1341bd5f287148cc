// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/output_name.h"

#include <set>
#include <thread>

#include "support/runs.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

std::string repeated(std::string_view text, int count) {
  std::string all;
  for (int i = 0; i < count; ++i) all += text;
  return all;
}

TEST(UniqueOutputURL, GivesNamesInTheHouseStyle) {
  TemporaryFolder folder;
  folder.file("taken (copy).txt", "");
  folder.file("taken (copy) (1).txt", "");
  fs::create_symlink("nowhere", folder / "link (copy).txt");
  folder.folder("folder (copy).txt");
  struct Row {
    const char* loss;
    std::string stem;
    std::string extension;
    std::string name;
  };
  const std::vector<Row> rows{
      {"the plain name", "report", "pdf", "report (copy).pdf"},
      {"a name given out before is given again", "report", "pdf", "report (copy) (1).pdf"},
      {"a trailing dot", "Makefile", "", "Makefile (copy)"},
      {"two existing files are overwritten", "taken", "txt", "taken (copy) (2).txt"},
      {"a link to nowhere is followed and filled", "link", "txt", "link (copy) (1).txt"},
      {"a folder is in the way", "folder", "txt", "folder (copy) (1).txt"},
      {"a stem of 255 bytes leaves no room", repeated("a", 255), "txt", repeated("a", 244) + " (copy).txt"},
      {"the number pushes the name over the limit", repeated("a", 255), "txt", repeated("a", 240) + " (copy) (1).txt"},
      // 244 is no multiple of the three bytes of "日".
      {"a character is cut in half", repeated("日", 85), "txt", repeated("日", 81) + " (copy).txt"},
  };
  for (const Row& row : rows) {
    EXPECT_EQ(uniqueOutputURL(folder.path(), row.stem, "copy", row.extension), folder / row.name) << row.loss;
  }
}

TEST(UniqueOutputURL, NeverGivesANameTwice) {
  TemporaryFolder folder;
  const fs::path first = uniqueOutputURL(folder.path(), "a", "copy", "txt");
  folder.file(first.filename(), "");
  fs::remove(first);
  EXPECT_NE(uniqueOutputURL(folder.path() / "." / "..." / "..", "a", "copy", "txt"), first)
      << "another spelling of the folder";

  std::mutex mutex;
  std::set<fs::path> names;
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < 8; ++i) {
      threads.emplace_back([&] {
        for (int j = 0; j < 25; ++j) {
          const fs::path name = uniqueOutputURL(folder.path(), "b", "copy", "");
          const std::scoped_lock guard(mutex);
          names.insert(name);
        }
      });
    }
  }
  EXPECT_EQ(names.size(), 200);
  EXPECT_TRUE(names.contains(folder / "b (copy)"));
  EXPECT_TRUE(names.contains(folder / "b (copy) (199)")) << "a number was left out";
}

TEST(UniqueOutputURL, EndsWhereNothingCanBeLookedUp) {
  for (const fs::path folder : {"/proc/no/such", "/dev/null/below", "/proc/self/fd/9999"}) {
    EXPECT_EQ(uniqueOutputURL(folder, "a", "copy", "txt"), folder / "a (copy).txt");
  }
  const std::string suffix(300, 's');
  EXPECT_EQ(uniqueOutputURL("/tmp", "a", suffix, "").filename(), " (" + suffix + ")");
}

}  // namespace
}  // namespace quirn::tests
