// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The program as scripts see it: standard output, standard error and the exit status.

#include <sys/stat.h>

#include "support/process.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

class CommandLine : public testing::Test {
 protected:
  // What Python reads from the JSON on standard output.
  static std::string fromJson(const std::string& json, const std::string& expression) {
    const Ended ended = run({.arguments = {"-c",
                                           "import json, sys\nv = json.loads(sys.argv[1])\n"
                                           "print(" +
                                               expression + ")",
                                           json},
                             .program = "/usr/bin/python3"});
    EXPECT_EQ(ended.status, 0) << json << ended.error;
    return ended.output;
  }

  TemporaryFolder folder;
};

TEST_F(CommandLine, PrintsThePathOfEachOutput) {
  folder.file("a.txt", "abc");
  folder.file("b", "");
  const Ended beside = quirn(folder.path(), {"run", "text.hash-files", "a.txt"});
  EXPECT_EQ(beside.output, (folder / "a (checksums).txt\n").string());
  EXPECT_EQ(beside.error, "");
  EXPECT_EQ(beside.status, 0);
  const Ended chosen =
      quirn(folder.path(), {"run", "--out", "new/sums/", "text.hash-files", "./b", "--set=algorithm=md5", "-q"});
  EXPECT_EQ(chosen.output, (folder / "new/sums/b (checksums).txt\n").string());
  EXPECT_EQ(contentOf(folder / "new/sums/b (checksums).txt"), "d41d8cd98f00b204e9800998ecf8427e  b\n");
}

TEST_F(CommandLine, ReportsInJson) {
  folder.file("a \"b\"\n.txt", "abc");
  const Ended ended = quirn(folder.path(), {"run", "text.hash-files", "a \"b\"\n.txt", "gone", "--json"});
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(fromJson(ended.output, "list(v), v['operation'], [o['role'] for o in v['outputs']]"),
            "['operation', 'outputs', 'summary', 'status', 'failures'] text.hash-files "
            "['primary']\n");
  EXPECT_EQ(fromJson(ended.output, "v['outputs'][0]['path']"), (folder / "a \"b\"\n (checksums).txt\n").string());
  EXPECT_EQ(fromJson(ended.output, "v['summary'], v['status'], v['failures']"),
            "Created 1 of 2. 1 couldn’t be processed: gone. SHA-256: a \"b\"\n.txt "
            "[{'fileName': 'gone', 'message': \"Couldn't read gone.\"}]\n");
  const Ended failed = quirn(folder.path(), {"run", "stub.identity", "gone", "--json"});
  EXPECT_EQ(failed.status, 1);
  EXPECT_EQ(fromJson(failed.output, "v"),
            "{'operation': 'stub.identity', 'error': {'kind': 'readFailed', 'message': \"Couldn't "
            "read gone.\"}}\n");
  folder.file("\xFF.txt", "");
  const Ended done = quirn(folder.path(), {"run", "text.hash-files", "\xFF.txt", "--json"});
  EXPECT_EQ(fromJson(done.output, "v['summary'], v['failures'], len(v['outputs'])"), "None [] 1\n");
}

TEST_F(CommandLine, TellsOfTheCatalogInJson) {
  folder.file("a.md5", "");
  EXPECT_EQ(fromJson(quirn("/", {"list", "--json"}).output,
                     "{'text.hash-files', 'stub.identity'} <= {o['operationID'] for o in v}"),
            "True\n");
  EXPECT_EQ(fromJson(quirn("/", {"list", "--json", "--category", "text"}).output, "{o['category'] for o in v}"),
            "{'text'}\n");
  EXPECT_EQ(fromJson(quirn("/", {"describe", "--json", "text.hash-files"}).output,
                     "v['controls'][0]['key'], v['controls'][0]['default'], v['accepts']"),
            "algorithm sha256 One or more files\n");
  EXPECT_EQ(fromJson(quirn(folder.path(), {"suggest", "a.md5", "--json"}).output,
                     "'text.verify-checksums' in [o['operationID'] for o in v]"),
            "True\n");
  EXPECT_EQ(quirn(folder.path(), {"suggest", "gone"}).status, 1);
}

TEST_F(CommandLine, SaysWhatIsWrongAndSuggestsTheNearestName) {
  folder.file("a.txt", "abc");
  struct Row {
    std::vector<std::string> arguments;
    std::string sentence;  // in the message
  };
  const std::vector<Row> rows{
      {{"run", "text.hash-file", "a.txt"}, "Did you mean “text.hash-files”?"},
      {{"run", "text.hsah-files", "a.txt"}, "Did you mean “text.hash-files”?"},
      {{"describe", "stub.identiy"}, "Did you mean “stub.identity”?"},
      {{"runn", "stub.identity"}, "Did you mean “run”?"},
      {{"run", "text.hash-files", "a.txt", "--set", "algoritm=md5"},
       "There is no setting “algoritm”. Accepted: algorithm. Did you mean “algorithm”?"},
      {{"run", "text.hash-files", "a.txt", "--set", "algorithm=sha265"},
       "Accepted: sha256, sha1, sha512, md5. Did you mean “sha256”?"},
      {{"run", "text.hash-files", "a.txt", "--set", "algorithm"}, "write KEY=VALUE"},
      {{"run", "stub.identity", "a.txt", "--set", "a=b"}, "the operation has none"},
      {{"run", "text.hash-files", "a.txt", "--oot", "x"}, "Did you mean “--out”?"},
      {{"run", "text.hash-files", "a.txt", "--out"}, "“--out” needs a value: --out DIR."},
      {{"run", "text.hash-files", "a.txt", "--out", ""}, "“--out” needs a value"},
      {{"run", "text.hash-files", "a.txt", "--json=1"}, "“--json” takes no value."},
      {{"run"}, "needs an operation"},
      {{"run", "", "a.txt"}, "“quirn run” needs an operation."},
      {{"list", "--category", "txt"}, "Did you mean “text”?"},
      {{"list", "text"}, "“text” is one argument too many"},
      {{"describe", "stub.identity", "x"}, "“x” is one argument too many"},
      {{"describe"}, "needs an operation"},
      {{"suggest"}, "needs a file"},
      {{"help", "rnu"}, "Did you mean “run”?"},
      {{"--versoin"}, "Did you mean “--version”?"},
      {{std::string(100'000, 'x')}, "There is no command"},
  };
  for (const Row& row : rows) {
    const Ended ended = quirn(folder.path(), row.arguments);
    const std::string shown = fmt::format("{}", fmt::join(row.arguments, " ")).substr(0, 200);
    EXPECT_EQ(ended.status, 2) << shown;
    EXPECT_THAT(ended.error, testing::HasSubstr(row.sentence)) << shown;
    EXPECT_EQ(std::ranges::count(ended.error, '\n'), 1) << shown;
    EXPECT_EQ(ended.output, "");
  }
  EXPECT_EQ(namesIn(folder.path()), std::vector<std::string>{"a.txt"}) << "something ran anyway";
}

TEST_F(CommandLine, TakesWhatStandsBehindTwoDashesForFiles) {
  folder.file("--json", "abc");
  folder.file("-", "abc");
  const Ended ended = quirn(folder.path(), {"run", "stub.identity", "-", "--", "--json"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_EQ(namesIn(folder.path()), (std::vector<std::string>{"-", "- (copy)", "--json", "--json (copy)"}));
}

TEST_F(CommandLine, HelpsAndTellsItsVersion) {
  for (const std::vector<std::string>& arguments :
       std::vector<std::vector<std::string>>{{},
                                             {"--help"},
                                             {"-h"},
                                             {"help"},
                                             {"help", "run"},
                                             {"run", "--help"},
                                             {"run", "no-such", "-h"},
                                             {"--version"},
                                             {"describe", "stub.identity"}}) {
    const Ended ended = quirn("/", arguments);
    EXPECT_EQ(ended.status, 0);
    EXPECT_FALSE(ended.output.empty());
    EXPECT_EQ(ended.error, "");
  }
}

TEST_F(CommandLine, ColorsErrorsOnATerminalOnly) {
  const Invocation terminal{.arguments = {"run", "stub.identity", "gone"},
                            .folder = folder.path(),
                            .errorStream = Invocation::ErrorStream::terminal};
  EXPECT_THAT(run(terminal).error, testing::HasSubstr("\x1B[31mCouldn't read gone.\x1B[0m"));
  Invocation plain = terminal;
  plain.environment = {{"NO_COLOR", "1"}};
  EXPECT_EQ(run(plain).error, "Couldn't read gone.\r\n");
  plain.environment = {{"TERM", "dumb"}};
  EXPECT_EQ(run(plain).error, "Couldn't read gone.\r\n");
  EXPECT_EQ(quirn(folder.path(), {"run", "stub.identity", "gone"}).error, "Couldn't read gone.\n");
}

TEST_F(CommandLine, ShowsNamesWithoutDrivingTheTerminal) {
  folder.folder("a\x1B[2J\nb");
  const Ended ended = quirn(folder.path(), {"run", "stub.identity", "\x1B[2J\nb"});
  EXPECT_EQ(ended.error, "Couldn't read \\x1b[2J\\nb.\n");
}

TEST_F(CommandLine, DrawsItsProgressOnATerminalAndTakesItAwayAgain) {
  // Without blocks on the disk, and large enough for several looks at the progress.
  fs::resize_file(folder.file("large", ""), 256 << 20);
  Invocation invocation{.arguments = {"run", "text.hash-files", "large", "--set", "algorithm=md5"},
                        .folder = folder.path(),
                        .errorStream = Invocation::ErrorStream::terminal};
  const std::string drawn = run(invocation).error;
  EXPECT_THAT(drawn, testing::HasSubstr("  0%  Hashing large…"));
  EXPECT_TRUE(drawn.ends_with("\r\x1B[K")) << "the bar stays in the way of the next prompt";
  EXPECT_EQ(drawn.find('\n'), std::string::npos);
  invocation.arguments.emplace_back("--quiet");
  EXPECT_EQ(run(invocation).error, "");
  invocation.arguments.pop_back();
  invocation.errorStream = Invocation::ErrorStream::pipe;
  EXPECT_EQ(run(invocation).error, "");
}

}  // namespace
}  // namespace quirn::tests
