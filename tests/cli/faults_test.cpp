// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the program does on machines, files and terminals that misbehave: a sentence and a status,
// never a crash, a hang, a changed input or half an output.

#include <fcntl.h>
#include <sched.h>
#include <signal.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "support/process.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;
using Names = std::vector<std::string>;
using testing::HasSubstr;

// In a child: gives up the rights of the superuser, to whom no file is unreadable.
void becomeNobody() {
  constexpr uid_t nobody = 65534;
  if (::geteuid() != 0) return;
  if (::setresgid(nobody, nobody, nobody) != 0 || ::setresuid(nobody, nobody, nobody) != 0) ::_exit(1);
}

std::function<void()> withOutputOn(const char* device) {
  return [device] { ::dup2(::open(device, O_WRONLY), STDOUT_FILENO); };
}

TEST(Faults, OfInputsGiveTheirSentence) {
  TemporaryFolder folder;
  folder.file("good.txt", "abc");
  folder.folder("folder");
  folder.file("unreadable", "secret");
  fs::permissions(folder / "unreadable", fs::perms::none);
  ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0666), 0);
  fs::create_symlink("loop", folder / "loop");
  fs::create_symlink("pipe", folder / "link to pipe");
  fs::create_symlink("nowhere", folder / "dangling");
  const std::string notThese =
      "Quirn can't run this on these files. Hash Files can’t run on these "
      "files.\n";
  struct Row {
    std::string input;
    std::string sentence;
  };
  const std::vector<Row> rows{
      {"gone", "Couldn't read gone.\n"},
      {"gone/below", "Couldn't read below.\n"},
      {"good.txt/below", "Couldn't read below.\n"},
      {"unreadable", "Couldn't read unreadable.\n"},
      {"folder", notThese},
      {"folder/", notThese},
      {"/", notThese},
      {"pipe", "Couldn't read pipe.\n"},
      {"link to pipe", "Couldn't read link to pipe.\n"},
      {"loop", "Couldn't read loop.\n"},
      {"dangling", "Couldn't read dangling.\n"},
      {"/dev/null", "Couldn't read null.\n"},
      {"/dev/zero", "Couldn't read zero.\n"},
      // A regular file whose first read fails.
      {"/proc/self/mem", "Couldn't read mem.\n"},
      {"", "Couldn't read .\n"},
      {std::string(300, 'n'), "Couldn't read " + std::string(300, 'n') + ".\n"},
      {std::string(5000, '/') + std::string(5000, 'p'), "Couldn't read " + std::string(5000, 'p') + ".\n"},
  };
  for (const Row& row : rows) {
    const Ended ended = quirn(folder.path(), {"run", "text.hash-files", "--out", "out", row.input}, &becomeNobody);
    EXPECT_EQ(ended.error, row.sentence) << row.input;
    EXPECT_EQ(ended.status, 1) << row.input;
    EXPECT_EQ(ended.output, "");
    EXPECT_FALSE(fs::exists(folder / "out/mem (checksums)"));
  }
}

TEST(Faults, OfOneInputDoNotStopTheOthers) {
  TemporaryFolder folder;
  for (const char* name : {"a", "b", "unreadable"}) folder.file(name, "abc");
  fs::permissions(folder / "unreadable", fs::perms::none);
  const Ended ended = quirn(folder.path(), {"run", "stub.identity", "a", "gone", "unreadable", "b"}, &becomeNobody);
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(ended.error,
            "gone: Couldn't read gone.\nunreadable: Couldn't read unreadable.\n"
            "Created 2 of 4. 2 couldn’t be processed: gone, unreadable.\n");
  EXPECT_EQ(std::ranges::count(ended.output, '\n'), 2);
}

TEST(Faults, OfTheOutputFolderGiveTheirSentence) {
  TemporaryFolder folder;
  folder.file("a.txt", "abc");
  folder.file("file", "");
  fs::permissions(folder.folder("read-only"), fs::perms(0555));
  for (const char* out : {"read-only", "file", "file/below", "read-only/below", "/proc", "/dev/null"}) {
    const Ended ended = quirn(folder.path(), {"run", "stub.identity", "a.txt", "--out", out}, &becomeNobody);
    EXPECT_EQ(ended.error, "Couldn't write a (copy).txt.\n") << out;
    EXPECT_EQ(ended.status, 1) << out;
  }
  EXPECT_EQ(namesIn(folder.path()), (Names{"a.txt", "file", "read-only"}));
  EXPECT_TRUE(namesIn(folder / "read-only").empty());
}

TEST(Faults, OfAFullDiskLeaveNoHalfOutput) {
  TemporaryFolder folder;
  folder.file("small.bin", "");  // has room on a full disk, whichever of the two is written first
  folder.file("large.bin", std::string(1 << 20, 'x'));
  folder.folder("out");
  const std::string out = folder / "out";
  const std::vector<std::string> arguments{"run", "stub.identity", "small.bin", "large.bin", "--out", "out"};
  // No file may become longer than a page: what a disk that is full does to one file.
  const Ended limited = quirn(folder.path(), arguments, [] {
    const rlimit page{4096, 4096};
    ::setrlimit(RLIMIT_FSIZE, &page);
  });
  EXPECT_EQ(limited.status, 1);
  EXPECT_THAT(limited.error, HasSubstr("large.bin: Couldn't write large (copy).bin.\n"));
  EXPECT_EQ(namesIn(out), Names{"small (copy).bin"});

  constexpr int noMount = 99;
  const Ended full = quirn(folder.path(), arguments, [&out] {
    if (::unshare(CLONE_NEWNS | (::geteuid() == 0 ? 0 : CLONE_NEWUSER)) != 0 ||
        ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
        ::mount("none", out.c_str(), "tmpfs", 0, "size=64k") != 0) {
      ::_exit(noMount);
    }
  });
  if (full.status == noMount) GTEST_SKIP() << "this machine allows no small disk to be mounted";
  EXPECT_EQ(full.status, 1);
  EXPECT_THAT(full.error, HasSubstr("large.bin: Couldn't write large (copy).bin.\n"));
  EXPECT_THAT(full.output, HasSubstr("small (copy).bin\n"));
}

TEST(Faults, OfStandardOutputAreTold) {
  TemporaryFolder folder;
  folder.file("a.txt", "abc");
  const std::vector<std::pair<const char*, std::function<void()>>> rows{
      {"a full disk", withOutputOn("/dev/full")},
      {"a closed pipe",
       [] {
         std::array<int, 2> ends{};
         if (::pipe(ends.data()) != 0 || ::dup2(ends[1], STDOUT_FILENO) < 0) ::_exit(1);
         ::close(ends[0]);
       }},
      {"no standard output", [] { ::close(STDOUT_FILENO); }},
  };
  for (const auto& [name, beforeStart] : rows) {
    for (const std::vector<std::string>& arguments :
         std::vector<std::vector<std::string>>{{"--version"},
                                               {"list"},
                                               {"help"},
                                               {"run", "stub.identity", "a.txt"},
                                               {"run", "stub.identity", "a.txt", "--json"}}) {
      const Ended ended = quirn(folder.path(), arguments, beforeStart);
      EXPECT_EQ(ended.status, 1) << name << ", " << arguments.back();
      EXPECT_EQ(ended.error, "Couldn't write to standard output.\n") << name;
    }
  }
  EXPECT_EQ(contentOf(folder / "a.txt"), "abc");
}

TEST(Faults, OfAllStreamsTogetherWriteIntoNoFile) {
  TemporaryFolder folder;
  folder.file("a.txt", "abc");
  const Ended ended = quirn(folder.path(), {"run", "stub.identity", "a.txt", "gone", "--verbose"}, [] {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) ::close(stream);
  });
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(snapshotOf(folder.path()), (std::map<std::string, std::string>{{"a.txt", "abc"}, {"a (copy).txt", "abc"}}));
}

TEST(Faults, OfTheWorkingFolderAreTold) {
  TemporaryFolder folder;
  const Ended ended = quirn(folder.path(), {"run", "stub.identity", "a.txt"}, [] {
    if (::mkdir("gone", 0700) != 0 || ::chdir("gone") != 0 || ::rmdir("../gone") != 0) ::_exit(99);
  });
  EXPECT_EQ(ended.status, 1);
  EXPECT_EQ(std::ranges::count(ended.error, '\n'), 1) << ended.error;
}

TEST(Faults, FewDescriptorsSlowARunDownAndNoMore) {
  TemporaryFolder folder;
  std::vector<std::string> arguments{"run", "stub.identity"};
  for (int i = 0; i < 150; ++i) arguments.push_back(folder.file(std::to_string(i), "abc"));
  const Ended ended = quirn(folder.path(), arguments, [] {
    const rlimit few{64, 64};
    ::setrlimit(RLIMIT_NOFILE, &few);
  });
  EXPECT_EQ(ended.status, 0) << ended.error.substr(0, 1000);
  EXPECT_EQ(namesIn(folder.path()).size(), 300);
}

TEST(ManyRuns, InOneFolderAtOnceTakeNothingFromEachOther) {
  TemporaryFolder folder;
  const fs::path out = folder.folder("out");
  std::vector<std::string> arguments{"run", "stub.identity", "--out", out};
  for (int i = 0; i < 40; ++i) arguments.push_back(folder.file(fmt::format("{}/same.txt", i), fmt::format("{:03}", i)));
  Process first({.arguments = arguments});
  Process second({.arguments = arguments});
  for (const Ended& ended : {first.wait(), second.wait()}) {
    EXPECT_EQ(ended.status, 0) << ended.error;
    EXPECT_EQ(std::ranges::count(ended.output, '\n'), 40);
  }
  std::map<std::string, int> copies;
  for (const auto& [name, content] : snapshotOf(out)) ++copies[content];
  EXPECT_EQ(copies.size(), 40);
  for (const auto& [content, count] : copies) EXPECT_EQ(count, 2) << content;
}

// A run in the middle of copying a large file, watched from a terminal.
class RunUnderWay : public testing::Test {
 protected:
  void SetUp() override {
    for (const char* name : {"large", "large too"}) fs::resize_file(folder.file(name, ""), std::uintmax_t{16} << 30);
  }

  Process started(std::vector<std::string> more = {}, std::function<void()> beforeStart = {}) const {
    std::vector<std::string> arguments{"run", "stub.identity", "large", "large too"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Process({.arguments = arguments,
                    .folder = folder.path(),
                    .errorStream = Invocation::ErrorStream::terminal,
                    .beforeStart = std::move(beforeStart)});
  }

  void expectInputsAlone() const { EXPECT_EQ(namesIn(folder.path()), (Names{"large", "large too"})); }

  TemporaryFolder folder;
};

TEST_F(RunUnderWay, IsCancelledByControlC) {
  Process process = started();
  ASSERT_TRUE(process.waitForError("Copying large"));
  process.type("\x03");
  const Ended ended = process.wait();
  EXPECT_EQ(ended.status, 130);
  EXPECT_THAT(ended.error, HasSubstr("Operation cancelled."));
  EXPECT_EQ(ended.output, "");
  expectInputsAlone();
}

TEST_F(RunUnderWay, SaysInJsonThatItWasCancelled) {
  Process process = started({"--json"});
  ASSERT_TRUE(process.waitForError("Copying large"));
  process.signal(SIGTERM);
  const Ended ended = process.wait();
  EXPECT_EQ(ended.status, 128 + SIGTERM);
  EXPECT_EQ(ended.output, R"({"operation":"stub.identity",)"
                          R"("error":{"kind":"cancelled","message":"Operation cancelled."}})"
                          "\n");
  expectInputsAlone();
}

TEST_F(RunUnderWay, LeavesNothingWhenItIsKilledAndTheNextRunSweeps) {
  Process process = started();
  ASSERT_TRUE(process.waitForError("Copying large"));
  process.signal(SIGKILL);
  EXPECT_EQ(process.wait().status, 128 + SIGKILL);
  // On a file system without unnamed files this would be left.
  folder.file(".quirn-0b8d0c0a-1f6e-4f57-8f0b-6f5c1d2e3f40.partial", "half of it");
  folder.file("small", "abc");
  EXPECT_EQ(quirn(folder.path(), {"run", "stub.identity", "small"}).status, 0);
  EXPECT_EQ(namesIn(folder.path()), (Names{"large", "large too", "small", "small (copy)"}));
}

// As nohup and the shells' background jobs start it.
TEST(Interrupts, ThatTheProgramWasStartedToIgnoreDoNotStopIt) {
  TemporaryFolder folder;
  fs::resize_file(folder.file("large", ""), 256 << 20);
  Process process({.arguments = {"run", "text.hash-files", "--set", "algorithm=md5", "large"},
                   .folder = folder.path(),
                   .errorStream = Invocation::ErrorStream::terminal,
                   .beforeStart = [] {
                     for (const int number : {SIGHUP, SIGINT}) ::signal(number, SIG_IGN);
                   }});
  ASSERT_TRUE(process.waitForError("Hashing large"));
  process.signal(SIGHUP);
  process.signal(SIGINT);
  EXPECT_EQ(process.wait().status, 0);
}

}  // namespace
}  // namespace quirn::tests
