// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <signal.h>

#include <cstdlib>
#include <thread>

#include "box/hostile_runs.h"
#include "documents/hash_files_operation.h"
#include "documents/verify_checksums_operation.h"
#include "hostile/hostile_operations.h"

namespace quirn::box {
namespace {

using hostile::DecoderOperation;
using hostile::EchoConfig;
using hostile::EchoOperation;
using hostile::MergeOperation;
using testing::HasSubstr;
using Inputs = std::function<std::vector<InputFile>(const HostileFolder&)>;

// Runs the operation in process and in a worker on the same inputs, and gives what came out, which is the same.
Ran runBothWays(const OperationType& type, const Inputs& inputs, const OperationConfig* config = nullptr) {
  const auto run = [&](Placement placement) {
    const HostileFolder folder;
    const std::vector<InputFile> files = inputs(folder);
    const auto context = std::make_shared<LocalContext>(std::ssize(files), folder.path() / "out");
    return runIn(testBox(), type.placedIn(placement, "hostile"), files, context, config);
  };
  const Ran inProcess = run(Placement::inProcess);
  const Ran inWorker = run(Placement::boxed);
  EXPECT_TRUE(inProcess == inWorker) << describe(inProcess) << "\n" << describe(inWorker);
  return inWorker;
}

TEST(BoxedRun, GivesTheSameOutputs) {
  const Ran ran = runBothWays(OperationType::of<DecoderOperation>(), [](const HostileFolder& folder) {
    return std::vector{folder.input("a.bin", "honest a")};
  });
  EXPECT_EQ(ran.outputs, (std::map<std::string, std::string>{{"a (decoded).txt", "honest a"}}));
  EXPECT_EQ(ran.status, "Decoding a.bin…");
}

TEST(BoxedRun, GivesTheSameErrors) {
  const Ran refused = runBothWays(OperationType::of<DecoderOperation>(), [](const HostileFolder& folder) {
    return std::vector{folder.input("a.bin", "no-such-attack")};
  });
  EXPECT_THAT(refused.error, HasSubstr("There is no attack no-such-attack."));
  const Ran unreadable = runBothWays(OperationType::of<DecoderOperation>(), [](const HostileFolder& folder) {
    const InputFile gone = folder.input("a.bin", "honest a");
    std::filesystem::remove(gone.url);
    return std::vector{gone};
  });
  EXPECT_THAT(unreadable.error, HasSubstr("readFailed: Couldn't read a.bin."));
  const Ran fault = runBothWays(OperationType::of<MergeOperation>(), [](const HostileFolder& folder) {
    return std::vector{folder.input("a.bin", "fault")};
  });
  EXPECT_EQ(fault.error, "fault: a fault of ours");
}

TEST(BoxedRun, HandsOverSettings) {
  EchoConfig config;
  config.colour = EchoConfig::Colour::green;
  config.loud = true;
  config.count = 42;
  config.ratio = 0.1;
  config.text = "a=b “ü”\n\x01\xFF";
  const Ran ran = runBothWays(
      OperationType::of<EchoOperation>(),
      [](const HostileFolder& folder) { return std::vector{folder.input("a.bin", "")}; }, &config);
  EXPECT_EQ(ran.outputs.at("a (echo).txt"), "1 true 42 0.1 a=b “ü”\n\x01\xFF");
}

TEST(BoxedRun, TakesFoldersAndCountsProgress) {
  const Ran ran = runBothWays(OperationType::of<MergeOperation>(), [](const HostileFolder& folder) {
    folder.input("folder/b/deep.txt", "2");
    folder.input("folder/a.txt", "1");
    folder.input("folder/bad.txt", "bad");
    return std::vector{folder.folder("folder"), folder.input("z.txt", "3"), folder.input("z.txt", "3")};
  });
  EXPECT_EQ(ran.outputs, (std::map<std::string, std::string>{{"folder (merged).txt", "1233"}}));
  EXPECT_EQ(ran.failures, (std::map<std::string, std::string>{{"bad.txt", "It is bad."}}));
  EXPECT_EQ(ran.summary, "Merged 5 files.");
  EXPECT_EQ(ran.progress, "5/5");
}

TEST(BoxedRun, ServesTheOperationsOfTheProgramItself) {
  Box box(builtProgram(), testLimits());
  const HostileFolder folder;
  const OperationType type = OperationType::of<HashFilesOperation>().placedIn(Placement::boxed);
  Ran ran = runIn(box, type, {folder.input("a.txt", "abc")});
  EXPECT_THAT(ran.outputs["a (checksums).txt"],
              HasSubstr("ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"));
}

TEST(BoxedRun, OpensNeighboursWhereTheOperationSaysSo) {
  Box box(builtProgram(), testLimits());
  const HostileFolder folder;
  folder.input("a.txt", "abc");
  const InputFile list = folder.input("SHA256SUMS",
                                      "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad  a.txt\n"
                                      "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad  b.txt\n"
                                      "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad  ../a.txt\n");
  const OperationType type = OperationType::of<ChecksumVerifyOperation>();
  const Ran boxed = runIn(box, type.placedIn(Placement::boxed), {list});
  EXPECT_EQ(boxed.status, "1 OK, 0 failed, 1 missing of 3 entries. 1 skipped (unsafe path).");
}

TEST(BoxedRun, IsCancelledLikeAnyOther) {
  for (const Placement placement : {Placement::inProcess, Placement::boxed}) {
    const HostileFolder folder;
    const auto context = std::make_shared<LocalContext>(1, std::nullopt);
    std::thread canceller([&] {
      EXPECT_TRUE(soon([&] { return !context->currentStatus().empty(); }));
      context->progress().cancel();
    });
    const Ran ran = runIn(testBox(), OperationType::of<MergeOperation>().placedIn(placement, "hostile"),
                          {folder.input("a.bin", "stop")}, context);
    canceller.join();
    EXPECT_EQ(ran.error, "cancelled");
    EXPECT_EQ(folder.snapshot().size(), 1U);
  }
}

TEST(BoxedRun, IsCancelledEvenWhereTheDecoderDoesNotListen) {
  const HostileFolder folder;
  const auto context = std::make_shared<LocalContext>(1, std::nullopt);
  std::thread canceller([&] {
    EXPECT_TRUE(soon([&] { return !context->currentStatus().empty(); }));
    context->progress().cancel();
  });
  const Ran ran = runIn(testBox(), boxed<DecoderOperation>(), {folder.input("a.bin", "hang")}, context);
  canceller.join();
  EXPECT_EQ(ran.error, "cancelled");
}

TEST(BoxedRun, KeepsItsWorkersFromRunToRun) {
  Box box(hostileProgram(), testLimits());
  const HostileFolder folder;
  const auto before = childrenOf(::getpid());
  const auto workers = [&] {
    auto children = childrenOf(::getpid());
    std::erase_if(children, [&](int child) { return std::ranges::find(before, child) != before.end(); });
    return children;
  };
  runIn(box, boxed<DecoderOperation>(), {folder.input("a.bin", "honest 1")});
  const auto first = workers();
  ASSERT_EQ(first.size(), 1U);
  runIn(box, boxed<DecoderOperation>(), {folder.input("b.bin", "honest 2")});
  EXPECT_EQ(workers(), first);
  // One that was killed while it waited is no file's fault.
  ::kill(first.front(), SIGKILL);
  ASSERT_TRUE(soon([&] { return !isAlive(first.front()); }));
  const Ran ran = runIn(box, boxed<DecoderOperation>(), {folder.input("c.bin", "honest 3")});
  EXPECT_EQ(ran.outputs.size(), 1U) << describe(ran);
}

TEST(BoxedRun, SaysThatAModuleIsMissing) {
  const HostileFolder folder;
  const OperationType type = OperationType::of<DecoderOperation>().placedIn(Placement::boxed, "nowhere");
  const Ran ran = runIn(testBox(), type, {folder.input("a.bin", "honest")});
  EXPECT_THAT(ran.error, HasSubstr("Something went wrong during the start of the program that reads files."));
}

TEST(BoxedRun, LoadsNoModuleFromElsewhere) {
  for (const char* const name : {"../hostile/hostile", "/tmp/x", "Hostile", "."}) {
    const HostileFolder folder;
    const OperationType type = OperationType::of<DecoderOperation>().placedIn(Placement::boxed, name);
    EXPECT_THAT(runIn(testBox(), type, {folder.input("a.bin", "honest")}).error, HasSubstr("Something went wrong"));
  }
  // The program as it is installed doesn't find what the tests have.
  Box box(builtProgram(), testLimits());
  const HostileFolder folder;
  EXPECT_THAT(runIn(box, boxed<DecoderOperation>(), {folder.input("a.bin", "honest")}).error,
              HasSubstr("Something went wrong"));
}

TEST(BoxSwitch, IsUnknownToARelease) {
  ::setenv("QUIRN_BOX", "off", 1);
#ifdef NDEBUG
  EXPECT_FALSE(isBoxOff());
#else
  EXPECT_TRUE(isBoxOff());
#endif
  ::unsetenv("QUIRN_BOX");
}

}  // namespace
}  // namespace quirn::box
