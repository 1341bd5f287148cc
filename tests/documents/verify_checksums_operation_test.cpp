// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/verify_checksums_operation.h"

#include <sys/stat.h>

#include "support/runs.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

// RFC 1321, A.5, and FIPS 180-4's examples for "abc".
const std::string md5OfAbc = "900150983cd24fb0d6963f7d28e17f72";
const std::string sha1OfAbc = "a9993e364706816aba3e25717850c26c9cd0d89d";
const std::string sha256OfAbc = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";
const std::string sha512OfAbc =
    "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a"
    "2192992a274fc1a836ba3c23a3feebbd454d4423643ce80e2a9ac94fa54ca49f";

class VerifyChecksums : public testing::Test {
 protected:
  // The report on a list of this content, without its two lines of heading.
  std::string findings(std::string_view list) {
    const std::string report = reportOn("list.md5", list);
    const std::string heading = "Checksum verification — list.md5\n" + rule();
    EXPECT_TRUE(report.starts_with(heading)) << report;
    return report.substr(std::min(heading.size(), report.size()));
  }

  std::string reportOn(const std::string& name, std::string_view list) {
    const fs::path path = folder.file(fs::path("in") / name, list);
    const auto context = contextIn(folder / "out");
    const Ran ran = runOperation(OperationType::of<ChecksumVerifyOperation>(), {inputAt(path)}, context);
    if (!ran.result) return ran.error ? ran.error->userMessage() : ran.fault;
    status = context->currentStatus();
    return contentOf(ran.result->outputs.at(0).url);
  }

  static std::string rule() {
    std::string line;
    for (int i = 0; i < 40; ++i) line += "─";
    return line + "\n";
  }

  TemporaryFolder folder;
  std::string status;
};

TEST_F(VerifyChecksums, ReportsEveryFinding) {
  folder.file("outside.txt", "abc");
  folder.file("in/abc.txt", "abc");
  folder.file("in/two\nlines", "abc");
  folder.folder("in/folder");
  ASSERT_EQ(::mkfifo((folder / "in/pipe").c_str(), 0600), 0);
  EXPECT_EQ(findings(md5OfAbc + "  abc.txt\n" + upperCased(sha1OfAbc) + "  abc.txt\n" + sha256OfAbc +
                     " *abc.txt\nSHA512 (abc.txt) = " + sha512OfAbc + "\n" + std::string(32, '0') + "  abc.txt\n" +
                     md5OfAbc + "  gone.txt\n" + md5OfAbc + "  ../outside.txt\n" + md5OfAbc + "  /etc/passwd\n\\" +
                     md5OfAbc + "  two\\nlines\n" + md5OfAbc + "  folder\n" + sha1OfAbc + "  pipe\n"),
            "OK       abc.txt\n"
            "OK       abc.txt\n"
            "OK       abc.txt\n"
            "OK       abc.txt\n"
            "FAILED   abc.txt\n"
            "MISSING  gone.txt\n"
            "SKIPPED  ../outside.txt  (path escapes the checksum file’s folder)\n"
            "SKIPPED  /etc/passwd  (path escapes the checksum file’s folder)\n"
            "OK       two\\nlines\n"
            "FAILED   folder  (unrecognised hash length 32)\n"
            "FAILED   pipe  (unrecognised hash length 40)\n"
            "\n5 OK, 3 failed, 1 missing of 11 entries. 2 skipped (unsafe path).\n");
  EXPECT_EQ(status, "5 OK, 3 failed, 1 missing of 11 entries. 2 skipped (unsafe path).");
}

TEST_F(VerifyChecksums, FindsNothingWhereNoFileCanBe) {
  fs::create_symlink("loop", folder.folder("in") / "loop");
  const std::string tooLong(300, 'n');
  EXPECT_EQ(findings(md5OfAbc + "  loop\n" + md5OfAbc + "  " + tooLong + "\n"),
            "MISSING  loop\nMISSING  " + tooLong + "\n\n0 OK, 0 failed, 2 missing of 2 entries.\n");
}

TEST_F(VerifyChecksums, LeavesOutTheSkippedWhereThereAreNone) {
  folder.file("in/abc.txt", "abc");
  EXPECT_EQ(findings(md5OfAbc + "  abc.txt\n" + std::string(48, 'a') + "  no entry\n"),
            "OK       abc.txt\n\n1 OK, 0 failed, 0 missing of 1 entries.\n");
}

TEST_F(VerifyChecksums, FindsFilesThatAListInLatin1Names) {
  folder.file("in/caf\xE9", "abc");
  folder.file("in/thé", "abc");
  EXPECT_EQ(findings(md5OfAbc + "  caf\xE9\n" + md5OfAbc + "  th\xE9\n"),
            "OK       café\nOK       thé\n\n2 OK, 0 failed, 0 missing of 2 entries.\n");
}

TEST_F(VerifyChecksums, SaysWhatAListLooksLikeWhereThereIsNone) {
  for (const std::string list : {"", "# only\n# comments\n", "\xFF\xFE nonsense"}) {
    EXPECT_EQ(reportOn("list.md5", list),
              "Quirn can't run this on these files. No checksum lines found. "
              "Expected GNU “<hash>  <name>” or BSD “ALGO (name) = hash”.");
  }
}

TEST_F(VerifyChecksums, HasAReportThatNoFileNameCanForge) {
  folder.file("in/abc.txt", "abc");
  const std::string report = reportOn("a\nOK       forged\xFF.md5", md5OfAbc + "  abc.txt");
  EXPECT_TRUE(report.starts_with("Checksum verification — a\\nOK       forged�.md5\n")) << report;
}

TEST_F(VerifyChecksums, RunsOnListsByTheirName) {
  const std::vector<std::pair<std::string, bool>> rows{
      {"SHA256SUMS", true}, {"md5sums", true},   {"checksums.md5", true}, {"a.SHA512", true},
      {"a.sum", true},      {"sums.txt", false}, {"md5", false},          {"a.sha256.txt", false},
  };
  for (const auto& [name, runs] : rows) {
    EXPECT_EQ(OperationType::of<ChecksumVerifyOperation>().canRun(inputsNamed({name})), runs) << name;
  }
}

}  // namespace
}  // namespace quirn::tests
