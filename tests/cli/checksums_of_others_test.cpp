// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Checksums between Quirn and the programs that everyone has.

#include "support/process.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

struct Judge {
  std::string algorithm;
  std::string program;
};

const std::vector<Judge> judges{{"sha256", "/usr/bin/sha256sum"},
                                {"sha1", "/usr/bin/sha1sum"},
                                {"sha512", "/usr/bin/sha512sum"},
                                {"md5", "/usr/bin/md5sum"}};

class ChecksumsOfOthers : public testing::Test {
 protected:
  void SetUp() override {
    for (const std::string& name : names) folder.file(name, "content of " + name);
    folder.file(names.front(), "");
    folder.file(names.back(), large);
  }

  const std::vector<std::string> names{"empty.txt", "two words (1) = x.txt", "line\nbreak", "-dash",
                                       "return\r",  "back\\slash\nbreak",    "\xFF",        "Ελ",
                                       "large.bin"};
  // More than a chunk, and not a whole number of them.
  const std::string large = std::string((2 << 20) + 12345, 'x');
  TemporaryFolder folder;
};

TEST_F(ChecksumsOfOthers, AreWhatTheyAcceptFromQuirn) {
  for (const Judge& judge : judges) {
    std::vector<std::string> arguments{"run",   "text.hash-files", "--set", "algorithm=" + judge.algorithm,
                                       "--out", judge.algorithm,   "--"};
    arguments.insert(arguments.end(), names.begin(), names.end());
    ASSERT_EQ(quirn(folder.path(), arguments).status, 0);
    const std::vector<std::string> lists = namesIn(folder / judge.algorithm);
    EXPECT_EQ(lists.size(), names.size());
    for (const std::string& list : lists) {
      const Ended verdict = run({.arguments = {"--check", "--strict", judge.algorithm + "/" + list},
                                 .folder = folder.path(),
                                 .program = judge.program});
      EXPECT_EQ(verdict.status, 0) << list << verdict.error << verdict.output;
    }
  }
}

TEST_F(ChecksumsOfOthers, AreAcceptedInEveryFormThatTheyWrite) {
  for (const Judge& judge : judges) {
    for (const char* form : {"--text", "--binary", "--tag"}) {
      std::vector<std::string> arguments{form, "--"};
      arguments.insert(arguments.end(), names.begin(), names.end());
      const Ended written = run({.arguments = arguments, .folder = folder.path(), .program = judge.program});
      ASSERT_EQ(written.status, 0) << written.error;
      const fs::path list = folder.file("all." + judge.algorithm, written.output);
      const Ended verified = quirn(folder.path(), {"run", "text.verify-checksums", list});
      ASSERT_EQ(verified.status, 0) << verified.error;
      const std::string report = contentOf(verified.output.substr(0, verified.output.size() - 1));
      const bool losesOne = form != std::string_view("--tag");
      // In the GNU form, brackets around a part of the name and "=" behind them look like BSD's.
      const std::size_t entries = losesOne ? names.size() - 1 : names.size();
      EXPECT_THAT(report, testing::HasSubstr(fmt::format("\n{0} OK, 0 failed, 0 missing of {0} entries.\n", entries)))
          << judge.program << " " << form << "\n"
          << report;
    }
  }
}

TEST_F(ChecksumsOfOthers, AreFoundWrongWhereAFileWasChanged) {
  const Ended written = run({.arguments = {"large.bin"}, .folder = folder.path(), .program = "/usr/bin/sha256sum"});
  folder.file("SHA256SUMS", written.output);
  folder.file("large.bin", large + "y");
  const Ended verified = quirn(folder.path(), {"run", "text.verify-checksums", "SHA256SUMS"});
  EXPECT_EQ(verified.status, 0) << "a mismatch is a finding, not a failure of the run";
  EXPECT_THAT(contentOf(folder / "SHA256SUMS (verify).txt"),
              testing::HasSubstr("FAILED   large.bin\n\n0 OK, 1 failed, 0 missing of 1 entries.\n"));
}

}  // namespace
}  // namespace quirn::tests
