// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Archives between Quirn and the programs that everyone has.

#include "archive/archive_builders.h"
#include "support/process.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

using Words = std::vector<std::string>;

class ArchivesOfOthers : public testing::Test {
 protected:
  ArchivesOfOthers() {
    folder.file("tree/two words.txt", "some text");
    folder.file("tree/Ελλάδα/日本.txt", "names of other scripts");
    folder.file("tree/empty", "");
    folder.file("tree/noise", noise(300'000));
    folder.file("tree/run", tests::run(12 << 20, 'r'));
    fs::permissions(folder / "tree/noise", fs::perms(0751));
    for (const auto& [name, content] : snapshotOf(folder / "tree")) fs::last_write_time(folder / "tree" / name, date);
    before = snapshotOf(folder / "tree");
  }

  // What the program said, which must have ended well.
  std::string other(const std::string& program, const Words& arguments) const {
    const Ended ended = run({.arguments = arguments, .folder = folder.path(), .program = "/usr/bin/" + program});
    EXPECT_EQ(ended.status, 0) << program << " " << fmt::format("{}", fmt::join(arguments, " ")) << ended.output
                               << ended.error;
    return ended.output;
  }

  void own(const Words& arguments) const {
    Words words{"run", "--quiet"};
    words.insert(words.end(), arguments.begin(), arguments.end());
    const Ended ended = quirn(folder.path(), words);
    EXPECT_EQ(ended.status, 0) << fmt::format("{}", fmt::join(arguments, " ")) << ended.error;
  }

  void expectTree(const std::string& extracted) const {
    const fs::path tree = folder / extracted / "tree";
    ASSERT_TRUE(fs::exists(tree)) << extracted;
    EXPECT_EQ(snapshotOf(tree), before) << extracted;
  }

  const fs::file_time_type date =
      fs::file_time_type::clock::from_sys(std::chrono::sys_seconds(std::chrono::seconds(1'600'000'002)));
  TemporaryFolder folder;
  std::map<std::string, std::string> before;
};

TEST_F(ArchivesOfOthers, AreWhatTheyAcceptFromQuirn) {
  own({"archive.zip-create", "tree"});
  own({"archive.encrypt", "--set", "password=secret", "tree"});
  own({"archive.tar-create", "tree"});
  own({"archive.tar-create", "--set", "gzip=true", "tree"});
  const std::string zip = "tree (archive).zip";
  other("unzip", {"-tq", zip});
  other("7zz", {"t", zip});
  other("7zz", {"t", "-psecret", "tree (encrypted).zip"});
  for (const char* archive : {"tree (archive).zip", "tree (Archive).tar", "tree (Archive).tar.gz"}) {
    const std::string into = std::string("by bsdtar ") + archive;
    fs::create_directory(folder / into);
    other("bsdtar", {"-x", "-f", archive, "-C", into});
    expectTree(into);
    EXPECT_EQ(fs::last_write_time(folder / into / "tree/empty"), date);
  }
  EXPECT_EQ(fs::status(folder / "by bsdtar tree (archive).zip/tree/noise").permissions(), fs::perms(0751));
  other("unzip", {"-q", zip, "-d", "by unzip"});
  expectTree("by unzip");
  EXPECT_EQ(fs::last_write_time(folder / "by unzip/tree/empty"), date);
  other("7zz", {"x", "-psecret", "-oby 7z", "tree (encrypted).zip"});
  expectTree("by 7z");
  other("tar", {"-xzf", "tree (Archive).tar.gz", "--one-top-level=by tar"});
  expectTree("by tar");
  other("python3", {"-c",
                    "import zipfile, tarfile, gzip\n"
                    "assert zipfile.ZipFile('tree (archive).zip').testzip() is None\n"
                    "zipfile.ZipFile('tree (archive).zip').extractall('by zipfile')\n"
                    "tarfile.open('tree (Archive).tar.gz').extractall('by tarfile')\n"
                    "gzip.open('tree (Archive).tar.gz').read()\n"});
  expectTree("by zipfile");
  expectTree("by tarfile");
}

TEST_F(ArchivesOfOthers, AreAcceptedInEveryFormThatTheyWrite) {
  other("zip", {"-qr", "zip.zip", "tree"});
  other("7zz", {"a", "7z.zip", "tree"});
  other("7zz", {"a", "-mem=AES256", "-psecret", "aes.zip", "tree"});
  other("bsdtar", {"-c", "--format", "zip", "-f", "bsdtar.zip", "tree"});
  // To a pipe: sizes behind the data, and ZIP64 for what is not known yet.
  other("python3",
        {"-c",
         "import zipfile, os\n"
         "class Pipe:\n"
         "  def __init__(self): self.file = open('pipe.zip', 'wb')\n"
         "  def write(self, data): return self.file.write(data)\n"
         "  def flush(self): self.file.flush()\n"
         "with zipfile.ZipFile(Pipe(), 'w', zipfile.ZIP_DEFLATED) as zip:\n"
         "  for folder, _, names in os.walk('tree'):\n"
         "    for name in names:\n"
         "      path = os.path.join(folder, name)\n"
         "      with zip.open(path, 'w', force_zip64=True) as entry: entry.write(open(path, 'rb').read())\n"});
  for (const std::string name : {"zip", "7z", "bsdtar", "pipe"}) {
    own({"archive.zip-extract", name + ".zip"});
    expectTree(name + " (extracted)");
  }
  own({"archive.zip-extract", "--set", "password=secret", "aes.zip"});
  expectTree("aes (extracted)");
  EXPECT_EQ(fs::last_write_time(folder / "aes (extracted)/tree/empty"), date);
  for (const char* format : {"gnu", "pax", "ustar", "v7"}) {
    const std::string name = std::string(format) + ".tar.gz";
    other("tar", {"--format", format, "-czf", name, "tree"});
    own({"archive.tar-extract", name});
    expectTree(std::string(format) + " (extracted)");
  }
}

TEST_F(ArchivesOfOthers, GzipThereAndBack) {
  own({"archive.gzip", "tree/run"});
  EXPECT_EQ(other("gzip", {"-dc", "tree/run (gz).gz"}), before.at("run"));
  other("gzip", {"-k", "tree/noise"});
  own({"archive.gzip", "tree/noise.gz"});
  EXPECT_EQ(contentOf(folder / "tree/noise.bin"), before.at("noise"));
}

}  // namespace
}  // namespace quirn::tests
