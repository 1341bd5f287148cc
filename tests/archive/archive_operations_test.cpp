// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the operations on archives call their outputs, say, and leave behind.

#include "archive/archive_builders.h"
#include "archive/gzip.h"
#include "archive/zip_writer.h"
#include "support/process.h"
#include "support/runs.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

class ArchiveOperations : public testing::Test {
 protected:
  Ran run(std::string_view id, const std::vector<std::string>& names,
          const std::vector<std::pair<std::string, std::string>>& settings = {}) const {
    const OperationType& type = *catalog().byID(fmt::format("archive.{}", id));
    const auto config = type.isConfigurable() ? type.defaultConfig() : nullptr;
    for (const auto& [key, value] : settings) type.defaultPanel().set(*config, key, value);
    std::vector<InputFile> inputs;
    for (const std::string& name : names) inputs.push_back(inputAt(folder / name));
    return runOperation(type, inputs, contextIn(folder.folder("out")), config.get());
  }

  // "name: summary", or the sentence of the error.
  std::string outcome(std::string_view id, const std::vector<std::string>& names,
                      const std::vector<std::pair<std::string, std::string>>& settings = {}) const {
    const Ran ran = run(id, names, settings);
    if (ran.error) return ran.error->userMessage();
    if (!ran.result) return ran.fault;
    return ran.result->outputs.at(0).url.filename().string() + ": " + ran.result->summary.value_or("");
  }

  TemporaryFolder folder;
};

TEST_F(ArchiveOperations, NameWhatTheyMakeAndSayWhatItIs) {
  folder.file("report.pdf", "report");
  folder.file("notes", "notes");
  folder.file("folder.d/inner/.hidden", "hidden");
  folder.file("folder.d/b", "b");
  struct Row {
    std::string id;
    std::vector<std::string> names;
    std::vector<std::pair<std::string, std::string>> settings;
    std::string outcome;
  };
  const std::vector<Row> rows{
      {"zip-create", {"report.pdf"}, {}, "report (archive).zip: Created report (archive).zip (1 files)"},
      {"zip-create", {"report.pdf", "notes"}, {}, "Archive (archive).zip: Created Archive (archive).zip (2 files)"},
      {"zip-create", {"folder.d"}, {}, "folder (archive).zip: Created folder (archive).zip (2 files)"},
      {"encrypt", {"notes"}, {{"password", "p"}}, "notes (encrypted).zip: Created notes (encrypted).zip (1 files)"},
      {"tar-create", {"report.pdf"}, {}, "report (Archive).tar: Created report (Archive).tar (1 files)"},
      {"tar-create",
       {"folder.d", "notes"},
       {{"gzip", "true"}},
       "Archive (Archive).tar.gz: Created Archive (Archive).tar.gz (3 files)"},
      {"gzip", {"report.pdf"}, {}, "report (gz).pdf.gz: Compressed report.pdf"},
      {"gzip", {"notes"}, {}, "notes (gz).gz: Compressed notes"},
  };
  for (const Row& row : rows) EXPECT_EQ(outcome(row.id, row.names, row.settings), row.outcome);
}

TEST_F(ArchiveOperations, RefuseWhatTheyCannotDo) {
  folder.folder("empty/inner");
  folder.file("a.txt", "abc");
  folder.file("a.gz", "no gzip at all, but long enough for one");
  folder.file("a.tgz", "no gzip at all, but long enough for one");
  folder.file("a.tar", "no tar");
  folder.file("empty.zip", zipOf({}));
  const std::string prefix = "Quirn can't run this on these files. ";
  EXPECT_EQ(outcome("zip-create", {"empty"}), prefix + "Nothing to compress.");
  EXPECT_EQ(outcome("tar-create", {"empty"}), prefix + "Nothing to archive.");
  EXPECT_EQ(outcome("encrypt", {"a.txt"}), prefix + "Enter a password first.");
  EXPECT_EQ(outcome("gzip", {"a.gz"}), prefix + "Couldn't decompress a.gz.");
  EXPECT_EQ(outcome("tar-extract", {"a.tgz"}), prefix + "Couldn't decompress the gzip stream.");
  EXPECT_EQ(outcome("tar-extract", {"a.tar"}), prefix + "Not a readable TAR archive.");
  EXPECT_EQ(outcome("zip-extract", {"empty.zip"}), prefix + "Archive is empty.");
  EXPECT_TRUE(namesIn(folder / "out").empty());
}

TEST_F(ArchiveOperations, TakeTheNamesOfFoldersAndFollowNoLinks) {
  folder.file("d/inner/.hidden", "hidden");
  folder.file("d/b", "b");
  folder.folder("d/empty");
  fs::create_symlink("b", folder / "d/link");
  ASSERT_TRUE(run("zip-create", {"d"}).result);
  ASSERT_TRUE(run("zip-extract", {"out/d (archive).zip"}).result);
  EXPECT_EQ(snapshotOf(folder / "out/d (archive) (extracted)"),
            (std::map<std::string, std::string>{{"d/b", "b"}, {"d/inner/.hidden", "hidden"}}));
  EXPECT_FALSE(fs::exists(folder / "out/d (archive) (extracted)/d/empty"));
}

TEST_F(ArchiveOperations, PassOverWhatCannotBeReadWhenZipping) {
  std::vector<InputFile> inputs;
  std::map<std::string, std::string> left;
  for (int i = 0; i < 40; ++i) {
    const std::string name = fmt::format("{:02}", i);
    inputs.push_back(inputAt(folder.file("in/" + name, "content of " + name)));
    if (i % 7 != 0 && i != 15 && i != 16)
      left[name] = "content of " + name;
    else
      fs::remove(inputs.back().url);
  }
  const Ran ran = runOperation(*catalog().byID("archive.zip-create"), inputs, contextIn(folder.folder("out")));
  ASSERT_TRUE(ran.result);
  EXPECT_EQ(ran.result->summary, "Created Archive (archive).zip (32 files)");
  ASSERT_TRUE(run("zip-extract", {"out/Archive (archive).zip"}).result);
  EXPECT_EQ(snapshotOf(folder / "out/Archive (archive) (extracted)"), left);
}

TEST_F(ArchiveOperations, OpenWhatTheyEncrypted) {
  folder.file("d/small", "small");
  folder.file("d/empty", "");
  folder.file("d/large", noise(1 << 20) + tests::run(10 << 20, 'x'));
  ASSERT_TRUE(run("encrypt", {"d"}, {{"password", "Pässwort"}}).result);
  const std::string archive = "out/d (encrypted).zip";
  const std::string prefix = "Quirn can't run this on these files. d (encrypted).zip";
  EXPECT_EQ(outcome("zip-extract", {archive}), prefix + " is password-protected — enter its password.");
  EXPECT_EQ(outcome("zip-extract", {archive}, {{"password", "wrong"}}),
            "Quirn can't run this on these files. Wrong password for d (encrypted).zip.");
  EXPECT_EQ(namesIn(folder / "out"), (std::vector<std::string>{"d (encrypted).zip"})) << "nothing was extracted";
  const Ran opened = run("zip-extract", {archive}, {{"password", "Pässwort"}});
  ASSERT_TRUE(opened.result);
  EXPECT_EQ(snapshotOf(opened.result->outputs.at(0).url / "d"), snapshotOf(folder / "d"));
}

// Files that are compressed in pieces, stored, and too large to be held when they are extracted.
TEST_F(ArchiveOperations, BringLargeFilesThereAndBack) {
  folder.file("d/text", tests::run(40 << 20, 't') + noise(100'000));
  folder.file("d/noise", noise(9 << 20));
  ASSERT_TRUE(run("zip-create", {"d"}).result);
  ASSERT_TRUE(run("tar-create", {"d"}).result);
  ASSERT_TRUE(run("tar-create", {"d"}, {{"gzip", "true"}}).result);
  for (const auto& [extract, archive] :
       {std::pair("zip-extract", "d (archive).zip"), std::pair("tar-extract", "d (Archive).tar"),
        std::pair("tar-extract", "d (Archive).tar.gz")}) {
    const Ran extracted = run(extract, {std::string("out/") + archive});
    ASSERT_TRUE(extracted.result) << archive;
    EXPECT_EQ(snapshotOf(extracted.result->outputs.at(0).url / "d"), snapshotOf(folder / "d")) << archive;
  }
}

TEST_F(ArchiveOperations, ExtractNothingOfATarWhoseGzipStreamBreaksOff) {
  folder.file("d/first", "first");
  folder.file("d/second", noise(1 << 20));
  ASSERT_TRUE(run("tar-create", {"d"}, {{"gzip", "true"}}).result);
  const std::string whole = contentOf(folder / "out/d (Archive).tar.gz");
  folder.file("cut.tgz", whole.substr(0, whole.size() / 2));
  EXPECT_EQ(outcome("tar-extract", {"cut.tgz"}),
            "Quirn can't run this on these files. Couldn't decompress the gzip stream.");
  EXPECT_EQ(namesIn(folder / "out"), (std::vector<std::string>{"d (Archive).tar.gz"}));
}

TEST_F(ArchiveOperations, GzipAndUngzipEveryNameAndSize) {
  struct Row {
    std::string name;
    std::string compressed;
    std::string expanded;
  };
  const std::vector<Row> rows{{"a.txt", "a (gz).txt.gz", "a (gz).txt"},
                              {"bare", "bare (gz).gz", "bare (gz).bin"},
                              {"x.tar.old", "x.tar (gz).old.gz", "x.tar (gz).old"}};
  for (const Row& row : rows) {
    for (const std::size_t size : {std::size_t{0}, std::size_t{5}, std::size_t{9} << 20}) {
      TemporaryFolder own;
      const std::string content = tests::run(size, 'z');
      const fs::path file = own.file(row.name, content);
      const OperationType& type = *catalog().byID("archive.gzip");
      ASSERT_TRUE(runOperation(type, {inputAt(file)}, contextIn()).result);
      const Ran back = runOperation(type, {inputAt(own / row.compressed)}, contextIn());
      ASSERT_TRUE(back.result);
      EXPECT_EQ(back.result->summary, "Decompressed " + row.compressed);
      EXPECT_EQ(back.result->outputs.at(0).url.filename(), row.expanded);
      EXPECT_EQ(contentOf(back.result->outputs.at(0).url), content);
    }
  }
}

TEST_F(ArchiveOperations, GiveTheSameZipEachTime) {
  for (int i = 0; i < 300; ++i) folder.file(fmt::format("d/{}", i), tests::run(static_cast<std::size_t>(i) * 97, 'x'));
  ASSERT_TRUE(run("zip-create", {"d"}).result);
  ASSERT_TRUE(run("zip-create", {"d"}).result);
  EXPECT_EQ(contentOf(folder / "out/d (archive).zip"), contentOf(folder / "out/d (archive) (1).zip"));
}

TEST_F(ArchiveOperations, TellWhatIsInAZip) {
  const std::string crowd = tests::run(1'500'000, 'x');
  folder.file("a.zip",
              zipOf({{.name = "folder/", .data = ""},
                     {.name = "folder/one.txt"},
                     {.name = "two\nlines", .data = deflatedText(crowd), .method = 8, .uncompressedSize = 1'500'000},
                     {.name = "big", .uncompressedSize = 0xFFFFFFF0},
                     {.name = "empty", .data = ""}}));
  ASSERT_TRUE(run("zip-inspect", {"a.zip"}).result);
  const std::string size = fmt::format("{} KB", (deflatedText(crowd).size() + 500) / 1000);
  std::string rule;
  for (int i = 0; i < 60; ++i) rule += "─";
  EXPECT_EQ(contentOf(folder / "out/a (Contents).txt"),
            "Contents of a.zip\n" + rule + "\nSize        Compressed  Name\n" +
                "3 bytes     3 bytes     folder/one.txt\n" + fmt::format("{:<12}{:<12}two\\nlines\n", "1.5 MB", size) +
                "4.29 GB     3 bytes     big\n"
                "Zero KB     Zero KB     empty\n" +
                rule + fmt::format("\n5 entries · 4.3 GB → {} (99% smaller)", size));
}

}  // namespace
}  // namespace quirn::tests
