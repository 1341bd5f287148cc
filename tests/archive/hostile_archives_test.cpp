// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Archives built to do harm, given to the operations that extract them: nothing is made outside of the folder, nothing
// grows beyond bounds, and every run ends with a folder or a sentence.

#include <sys/stat.h>

#include "archive/archive_builders.h"
#include "support/process.h"
#include "support/runs.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

// A folder with a file that no archive may touch, and room for outputs beside it.
class Victim {
 public:
  Victim() { folder_.file("precious", "precious"); }

  // What came of extracting the archive: a sentence, or "extracted".
  std::string extract(const std::string& name, const std::string& archive, const std::string& password = {}) {
    const auto& type = *catalog().byID(name.ends_with(".zip") ? "archive.zip-extract" : "archive.tar-extract");
    const auto config = type.isConfigurable() ? type.defaultConfig() : nullptr;
    if (config) type.defaultPanel().set(*config, "password", password);
    const fs::path file = folder_.file("in/" + name, archive);
    const Ran ran = runOperation(type, {inputAt(file)}, contextIn(folder_.folder("out")), config.get());
    EXPECT_EQ(ran.fault, "");
    EXPECT_EQ(contentOf(folder_ / "precious"), "precious");
    EXPECT_EQ(namesIn(folder_.path()), (std::vector<std::string>{"in", "out", "precious"}));
    EXPECT_LE(namesIn(folder_ / "out").size(), 1U);
    return ran.error ? ran.error->userMessage() : "extracted";
  }

  fs::path extracted() const { return folder_ / "out" / "a (extracted)"; }
  std::map<std::string, std::string> files() const {
    return fs::exists(extracted()) ? snapshotOf(extracted()) : std::map<std::string, std::string>();
  }

 private:
  TemporaryFolder folder_;
};

std::string unsafe(const std::string& name) {
  return "Quirn can't run this on these files. Unsafe path in archive: " + name;
}

const std::string emptyArchive = "Quirn can't run this on these files. Archive is empty.";
const std::string generic = "Something went wrong during batch.";

using Files = std::map<std::string, std::string>;

TEST(HostileArchives, CannotNameAPlaceOutsideOfTheFolder) {
  struct Row {
    std::string name;
    std::string outcome;
    Files files;
  };
  const std::vector<Row> rows{
      {"/etc/passwd", unsafe("/etc/passwd"), {}},
      {"../precious", unsafe("../precious"), {}},
      {"a/../../precious", unsafe("a/../../precious"), {}},
      {"a/..", unsafe("a/.."), {}},
      {"", unsafe(""), {}},
      {"a/./b", "extracted", {{"a/b", "abc"}}},
      {"a//b", "extracted", {{"a/b", "abc"}}},
      {"..\\..\\precious", "extracted", {{"..\\..\\precious", "abc"}}},
      {"C:\\precious", "extracted", {{"C:\\precious", "abc"}}},
      {"tab\tand\x1B[31m", "extracted", {{"tab\tand\x1B[31m", "abc"}}},
      {"...", "extracted", {{"...", "abc"}}},
  };
  for (const Row& row : rows) {
    Victim zip;
    EXPECT_EQ(zip.extract("a.zip", zipOf({{.name = row.name}})), row.outcome) << row.name;
    EXPECT_EQ(zip.files(), row.files) << row.name;
    if (row.name.empty()) continue;  // TAR passes over entries without a name
    Victim tar;
    EXPECT_EQ(tar.extract("a.tar", tarOf({{.name = row.name}})), row.outcome) << row.name;
    EXPECT_EQ(tar.files(), row.files) << row.name;
  }
}

TEST(HostileArchives, CannotHideAPlaceBehindAZeroByte) {
  Victim victim;
  EXPECT_EQ(victim.extract("a.zip", zipOf({{.name = std::string("a\0/../b", 7)}})), unsafe("a\\x00/../b"));
  Victim other;
  EXPECT_EQ(other.extract("a.zip", zipOf({{.name = std::string("a\0b", 3)}})), unsafe("a\\x00b"));
}

TEST(HostileArchives, KeepWhatWasExtractedBeforeTheFault) {
  Victim victim;
  EXPECT_EQ(victim.extract("a.zip", zipOf({{.name = "one"}, {.name = "../two"}, {.name = "three"}})), unsafe("../two"));
  EXPECT_EQ(victim.files(), (Files{{"one", "abc"}}));
}

TEST(HostileArchives, LeaveNoLinkThatLeadsOut) {
  struct Row {
    std::string target;
    bool isMade;
  };
  const std::vector<Row> rows{
      {"/etc/passwd", false}, {"../../precious", false}, {"..", false},  {"", false},          {"/dev/zero", false},
      {"one", true},          {"./one", true},           {"gone", true}, {"../folder/x", true}};
  for (const Row& row : rows) {
    const std::string target = row.target;
    Victim zip;
    EXPECT_EQ(zip.extract("a.zip", zipOf({{.name = "one"}, {.name = "folder/link", .data = target, .mode = 0120777}})),
              "extracted");
    // A link in a folder may lead one step up.
    const bool isMade = row.isMade || target == "..";
    EXPECT_EQ(fs::is_symlink(zip.extracted() / "folder/link"), isMade) << target;
    Victim tar;
    EXPECT_EQ(
        tar.extract("a.tar", tarOf({{.name = "one"}, {.name = "link", .data = "", .type = '2', .linkName = target}})),
        "extracted");
    EXPECT_EQ(fs::is_symlink(tar.extracted() / "link"), row.isMade && target != "../folder/x") << target;
  }
}

TEST(HostileArchives, AreEmptyWhereTheyHoldNothingButALinkThatLeadsOut) {
  Victim victim;
  EXPECT_EQ(victim.extract("a.zip", zipOf({{.data = "../..", .mode = 0120777}})), emptyArchive);
}

TEST(HostileArchives, CannotWriteThroughALinkOfTheirOwn) {
  const ZipPart inner{.name = "folder/", .data = "", .mode = 040755};
  const auto link = [](std::string name, std::string target) {
    return ZipPart{.name = std::move(name), .data = std::move(target), .mode = 0120777};
  };
  {
    Victim victim;  // the link stays inside, and so does what is written through it
    EXPECT_EQ(victim.extract("a.zip", zipOf({inner, link("link", "folder"), {.name = "link/file"}})), "extracted");
    EXPECT_EQ(contentOf(victim.extracted() / "folder/file"), "abc");
  }
  {
    Victim victim;  // each link is acceptable as text; together they leave the folder
    const std::string zip = zipOf({{.name = "x/y/", .data = ""},
                                   link("x/y/up", "../.."),
                                   link("out", "x/y/up/../.."),
                                   link("out2", "x/y/up/.."),
                                   {.name = "out2/precious"}});
    EXPECT_EQ(victim.extract("a.zip", zip), unsafe("out2/precious"));
  }
  {
    Victim victim;  // a file in the place of a link replaces it, and leaves what the link named
    const std::string zip =
        zipOf({{.name = "one", .data = "one"}, link("link", "one"), {.name = "link", .data = "new"}});
    EXPECT_EQ(victim.extract("a.zip", zip), "extracted");
    EXPECT_EQ(contentOf(victim.extracted() / "one"), "one");
    EXPECT_EQ(contentOf(victim.extracted() / "link"), "new");
    EXPECT_FALSE(fs::is_symlink(victim.extracted() / "link"));
  }
}

TEST(HostileArchives, MayNameAPlaceTwiceOrPutAFileWhereAFolderMustBe) {
  Victim twice;
  EXPECT_EQ(twice.extract("a.zip", zipOf({{.data = "first"}, {.data = "second"}})), "extracted");
  EXPECT_EQ(twice.files(), (Files{{"a.txt", "second"}}));
  Victim file;
  EXPECT_EQ(file.extract("a.zip", zipOf({{.name = "a"}, {.name = "a/b"}})), "Couldn't write b.");
  EXPECT_EQ(file.files(), (Files{{"a", "abc"}}));
}

TEST(HostileArchives, EndWithASentenceWhereANameIsTooLong) {
  Victim part;
  EXPECT_TRUE(part.extract("a.zip", zipOf({{.name = run(256, 'n')}})).starts_with("Couldn't write nnn"));
  std::string path;
  for (int i = 0; i < 300; ++i) path += "deep/";
  Victim deep;
  EXPECT_EQ(deep.extract("a.zip", zipOf({{.name = path + "file"}})), "Couldn't write file.");
  Victim long4096;
  EXPECT_NE(long4096.extract("a.zip", zipOf({{.name = run(5000, 'd') + "/file"}})), "extracted");
}

TEST(HostileArchives, SetNoModesAndMakeNoDevices) {
  Victim zip;
  EXPECT_EQ(zip.extract("a.zip", zipOf({{.name = "setuid", .mode = 0104777}, {.name = "device", .mode = 020666}})),
            "extracted");
  for (const char* name : {"setuid", "device"}) {
    struct stat status{};
    ASSERT_EQ(::lstat((zip.extracted() / name).c_str(), &status), 0);
    EXPECT_TRUE(S_ISREG(status.st_mode)) << name;
    EXPECT_EQ(status.st_mode & 07111U, 0U) << name;
  }
  Victim tar;
  EXPECT_EQ(tar.extract("a.tar",
                        tarOf({{.name = "null", .data = "", .type = '3'}, {.name = "pipe", .data = "", .type = '6'}})),
            "extracted");
  EXPECT_EQ(tar.files(), (Files{{"null", ""}, {"pipe", ""}}));
  Victim hard;
  EXPECT_EQ(hard.extract("a.tar", tarOf({{.name = "hard", .data = "", .type = '1', .linkName = "../../precious"}})),
            emptyArchive);
}

const std::string overlapping =
    "Quirn can't run this on these files. a.zip has entries that overlap one another, as only "
    "a harmful archive has.";

TEST(HostileArchives, AreRefusedWhereEntriesShareBytes) {
  Victim same;
  EXPECT_EQ(same.extract("a.zip", zipOf({{.name = "a"}, {.name = "b", .offset = 0}})), overlapping);
  // An entry whose data is another whole entry.
  const std::string inner = zipOf({{.name = "b"}}).substr(0, 30 + 1 + 3);
  Victim nested;
  EXPECT_EQ(nested.extract("a.zip", zipOf({{.name = "a", .data = inner}, {.name = "b", .offset = 30 + 1}})),
            overlapping);
  EXPECT_TRUE(nested.files().empty());
}

TEST(HostileArchives, AreFoundToOverlapInLittleTime) {
  std::vector<ZipPart> parts(20'000);
  for (std::size_t i = 0; i < parts.size(); ++i) parts[i] = {.name = "f", .data = ""};
  parts.back().offset = 0;
  Victim victim;
  EXPECT_EQ(victim.extract("a.zip", zipOf(parts)), overlapping);
}

TEST(HostileArchives, WithSizesAndSumsThatLieEndSoundly) {
  const std::string zeros = run(1 << 20, '\0');
  const ZipPart bomb{.data = deflatedText(zeros), .method = 8, .crc = crcOf(zeros), .uncompressedSize = 100};
  Victim small;
  EXPECT_EQ(small.extract("a.zip", zipOf({bomb})), generic);
  EXPECT_TRUE(small.files().empty());
  Victim sum;
  EXPECT_EQ(sum.extract("a.zip", zipOf({{.name = "one"}, {.name = "two", .crc = 1}})), generic);
  EXPECT_EQ(sum.files(), (Files{{"one", "abc"}}));
  Victim huge;
  const std::string record = le16(1) + le16(16) + le64(~0ULL) + le64(~0ULL - 5);
  EXPECT_EQ(
      huge.extract("a.zip", zipOf({{.compressedSize = 0xFFFFFFFF, .uncompressedSize = 0xFFFFFFFF, .extra = record}})),
      generic);
  Victim large;  // declared too large to be held, and so read as a stream; it is what it is
  EXPECT_EQ(
      large.extract(
          "a.zip",
          zipOf({{.data = deflatedText("abc"), .method = 8, .crc = crcOf("abc"), .uncompressedSize = 0xFFFFFFFE}})),
      "extracted");
  EXPECT_EQ(large.files(), (Files{{"a.txt", "abc"}}));
}

TEST(HostileArchives, OfManyBombsStopAtTheBudget) {
  // More than a gigabyte, and more than a thousand times what came in: zlib squeezes zeros harder than we do.
  const TemporaryFolder folder;
  const Ended made = quirn::tests::run({.arguments = {"-c",
                                                      "import zlib\n"
                                                      "squeeze = zlib.compressobj(9, zlib.DEFLATED, -15)\n"
                                                      "zeros = squeeze.compress(bytes(20 << 20)) + squeeze.flush()\n"
                                                      "open('zeros', 'wb').write(zeros)\n"},
                                        .folder = folder.path(),
                                        .program = "/usr/bin/python3"});
  ASSERT_EQ(made.status, 0) << made.error;
  const ZipPart bomb{.data = contentOf(folder / "zeros"),
                     .method = 8,
                     .crc = crcOf(run(20 << 20, '\0')),
                     .uncompressedSize = 20 << 20};
  std::vector<ZipPart> parts(60, bomb);
  for (std::size_t i = 0; i < parts.size(); ++i) parts[i].name = fmt::format("{}", i);
  Victim victim;
  EXPECT_EQ(victim.extract("a.zip", zipOf(parts)),
            "Quirn can't run this on these files. a.zip would become far larger "
            "than an honest file of its size.");
}

TEST(HostileArchives, CutOffAtAnyByteEndSoundly) {
  const std::string text = "some text, some text";
  const std::string zip =
      zipOf({{.data = deflatedText(text), .method = 8, .crc = crcOf(text), .uncompressedSize = 20}, {}});
  const std::string tar = tarOf({{}, {.name = "b", .data = run(600, 'b')}});
  // Through the readers themselves every byte is tried elsewhere; a run in a worker costs more.
  for (std::size_t size = 0; size < zip.size(); size += 29) {
    Victim victim;
    EXPECT_EQ(victim.extract("a.zip", zip.substr(0, size)), generic) << size;
  }
  for (std::size_t size = 0; size < tar.size(); size += 256) {
    Victim victim;
    const std::string outcome = victim.extract("a.tar", tar.substr(0, size));
    EXPECT_EQ(outcome, size < 512 ? "Quirn can't run this on these files. Not a readable TAR archive." : "extracted")
        << size;
  }
}

TEST(HostileArchives, OfTenGigabytesOfNothingTakeNoMemory) {
  // A sparse TAR whose one entry is 10 GiB, of which the disk holds nothing; only its listing is of interest here.
  TemporaryFolder folder;
  const fs::path file = folder.file("a.tar", tarOf({{.name = "._big", .data = "", .size = "120000000000"}}));
  fs::resize_file(file, (std::uintmax_t{10} << 30) + 2048);
  const Ran ran =
      runOperation(*catalog().byID("archive.tar-extract"), {inputAt(file)}, contextIn(folder.folder("out")));
  ASSERT_TRUE(ran.error);
  EXPECT_EQ(ran.error->userMessage(), emptyArchive);
}

TEST(HostileArchives, KeepTheirLitterToThemselves) {
  Victim victim;
  EXPECT_EQ(
      victim.extract(
          "a.zip", zipOf({{.name = "__MACOSX/x"}, {.name = "d/._x"}, {.name = ".DS_Store"}, {.name = "d/.DS_Store"}})),
      "extracted");
  EXPECT_EQ(victim.files(), (Files{{"d/.DS_Store", "abc"}}));
  Victim litter;
  EXPECT_EQ(litter.extract("a.zip", zipOf({{.name = "__MACOSX/x"}})), emptyArchive);
}

}  // namespace
}  // namespace quirn::tests
