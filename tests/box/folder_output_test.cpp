// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "box/hostile_runs.h"
#include "hostile/hostile_operations.h"
#include "support/temporary_folder.h"

namespace quirn::box {
namespace {

namespace fs = std::filesystem;
using hostile::UnpackOperation;
using tests::contentOf;
using Tree = std::map<std::string, std::string>;

// What lies beneath a folder: content or length of files, "-> target" of links, "/" for folders that are empty.
Tree treeOf(const fs::path& folder) {
  Tree tree;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    std::string& what = tree[entry.path().lexically_relative(folder).string()];
    if (entry.is_symlink()) {
      what = "-> " + fs::read_symlink(entry.path()).string();
    } else if (entry.is_directory()) {
      what = "/";
    } else {
      what = entry.file_size() > 100 ? std::to_string(entry.file_size()) : contentOf(entry.path());
    }
  }
  return tree;
}

struct Row {
  std::string_view sentence;
  std::string script;
  Tree tree;
  std::string error;
};

class FolderOutput : public testing::TestWithParam<Placement> {
 protected:
  // Unpacks `script` and gives what lies in the output folder then.
  Tree unpack(const std::string& script, std::string& error) {
    const HostileFolder folder;
    folder.input("secret/a.txt", "own");
    const auto context = std::make_shared<LocalContext>(1, folder.path() / "out");
    const OperationType type = OperationType::of<UnpackOperation>().placedIn(GetParam(), "hostile");
    error = runIn(testBox(), type, {folder.input("a.arc", script)}, context).error;
    EXPECT_EQ(folder.snapshot().at("secret/a.txt"), "own");
    EXPECT_EQ(std::ranges::distance(fs::directory_iterator(folder.path())), 3);
    return treeOf(folder.path() / "out");
  }
};

TEST_P(FolderOutput, HoldsWhatWasMadeInsideItAndNothingElse) {
  const std::string root = "a (unpacked)";
  const std::string long255(255, 'n');
  const std::vector<Row> rows{
      {"an empty folder appears too", "", {{root, "/"}}, ""},
      {"folders on the way are made, empty parts and dots mean nothing",
       "file a//b/./c.txt 1\nfolder d/e\nfile /x 1",
       {{root, "/"},
        {root + "/a", "/"},
        {root + "/a/b", "/"},
        {root + "/a/b/c.txt", "1"},
        {root + "/d", "/"},
        {root + "/d/e", "/"}},
       "Outside: /x"},
      {"the later of two files of one name stays, whatever their sizes",
       "file a one\nlarge b 300000\nlarge a 200000\nfile b two",
       {{root, "/"}, {root + "/a", "200000"}, {root + "/b", "two"}},
       ""},
      {"a file takes the place of a link, not of where it leads",
       "file a one\nlink b a\nfile b two",
       {{root, "/"}, {root + "/a", "one"}, {root + "/b", "two"}},
       ""},
      {"a link inside the folder is followed on the way",
       "folder d\nlink l d\nfile l/a 1\nlink d/m ../d\nlarge d/m/b 200000",
       {{root, "/"},
        {root + "/d", "/"},
        {root + "/d/a", "1"},
        {root + "/d/b", "200000"},
        {root + "/d/m", "-> ../d"},
        {root + "/l", "-> d"}},
       ""},
      {"a link takes the place of a folder with all that is in it",
       "file d/e/f 1\nfile x 1\nlink d x",
       {{root, "/"}, {root + "/d", "-> x"}, {root + "/x", "1"}},
       ""},
      {"a name that climbs is outside, and nothing is made after it",
       "file a 1\nfile ../../secret/a.txt 2\nfile b 3",
       {{root, "/"}, {root + "/a", "1"}},
       "Outside: ../../secret/a.txt"},
      {"a link that leads out is not followed",
       "link up ../..\nfile up/secret/a.txt 2",
       {{root, "/"}, {root + "/up", "-> ../.."}},
       "Outside: up/secret/a.txt"},
      {"links that lead out together are not followed, by large files neither",
       "folder d/e\nlink d/e/u ..\nlink v d/e/u/..\nlink w v/..\nlarge w/secret/a.txt 200000",
       {{root, "/"},
        {root + "/d", "/"},
        {root + "/d/e", "/"},
        {root + "/d/e/u", "-> .."},
        {root + "/v", "-> d/e/u/.."},
        {root + "/w", "-> v/.."}},
       "Outside: w/secret/a.txt"},
      {"nor are absolute ones, for folders and links",
       "link t /\nfolder t/quirn-was-here",
       {{root, "/"}, {root + "/t", "-> /"}},
       "Outside: t/quirn-was-here"},
      {"a file that was taken back is not there",
       "file d/a 1\nabandon d/b half\nfile c 2\nabandon c half",
       {{root, "/"}, {root + "/d", "/"}, {root + "/d/a", "1"}},
       ""},
      {"a folder that can't be made is none", "file a 1\nfolder a/b", {{root, "/"}, {root + "/a", "1"}}, ""},
      {"a name of the longest length fits", "file " + long255 + " 1", {{root, "/"}, {root + "/" + long255, "1"}}, ""},
      {"one that was not published was never there", "file a 1\ndrop", {}, "Dropped."},
  };
  for (const Row& row : rows) {
    std::string error;
    EXPECT_EQ(unpack(row.script, error), row.tree) << row.sentence;
    EXPECT_THAT(error, testing::HasSubstr(row.error)) << row.sentence;
    EXPECT_EQ(error.empty(), row.error.empty()) << row.sentence << error;
  }
}

TEST_P(FolderOutput, IsNotMadeWhereANameIsTooLongOrAFileIsInTheWay) {
  const std::vector<std::string> scripts{"file " + std::string(256, 'n') + " 1", "file a 1\nfile a/b 2",
                                         "file d/e 1\nfile d 2", "large d/" + std::string(300, 'n') + " 100000"};
  for (const std::string& script : scripts) {
    std::string error;
    EXPECT_EQ(unpack(script, error), Tree()) << script;
    EXPECT_THAT(error, testing::HasSubstr("writeFailed")) << script;
  }
}

TEST_P(FolderOutput, GivesFilesTheirDates) {
  const HostileFolder folder;
  const OperationType type = OperationType::of<UnpackOperation>().placedIn(GetParam(), "hostile");
  runIn(testBox(), type, {folder.input("a.arc", "file small 1\nlarge large 200000\nfile last 2")});
  for (const char* const name : {"small", "large", "last"}) {
    struct stat status{};
    ASSERT_EQ(::stat((folder.path() / "a (unpacked)" / name).c_str(), &status), 0) << name;
    EXPECT_EQ(status.st_mtim.tv_sec, 1'000'000'000) << name;
  }
}

INSTANTIATE_TEST_SUITE_P(Placements, FolderOutput, testing::Values(Placement::inProcess, Placement::boxed),
                         [](const auto& row) { return row.param == Placement::boxed ? "boxed" : "inProcess"; });

TEST(FolderOutputBudget, CountsWhatGoesIntoAFolder) {
  const HostileFolder folder;
  std::string script;
  for (int i = 0; i < 1000; ++i) script += "large " + std::to_string(i) + " 60000\n";
  const Ran ran = runIn(testBox(), boxed<UnpackOperation>(), {folder.input("bomb.arc", script)});
  EXPECT_THAT(ran.error, testing::HasSubstr("would become far larger"));
  EXPECT_EQ(folder.snapshot().size(), 1U);
}

}  // namespace
}  // namespace quirn::box
