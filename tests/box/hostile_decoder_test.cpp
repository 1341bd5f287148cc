// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "box/hostile_runs.h"
#include "hostile/attacks.h"
#include "hostile/hostile_operations.h"

namespace quirn::box {
namespace {

using hostile::DecoderOperation;
using testing::HasSubstr;

constexpr const char* stopped = "attack.bin is damaged in a way that stopped the program that read it.";
constexpr const char* misbehaved = "attack.bin made the program that read it ask for what it was not given.";

// Runs a decoder that attacks between two that don't, and gives the sentence for the one. The others succeed, and
// nothing else in the folder has changed.
std::string sentenceFor(const std::string& attack, const std::string& argument, const HostileFolder& folder,
                        Box& box = testBox()) {
  const std::vector<InputFile> inputs{folder.input("first.bin", "honest 1"),
                                      folder.input("attack.bin", attack + " " + argument),
                                      folder.input("last.bin", "honest 2")};
  auto expected = folder.snapshot();
  expected["first (decoded).txt"] = "honest 1";
  expected["last (decoded).txt"] = "honest 2";
  const Ran ran = runIn(box, boxed<DecoderOperation>(), inputs);
  EXPECT_EQ(ran.outputs.size(), 2U) << attack << describe(ran);
  EXPECT_EQ(ran.failures.size(), 1U) << attack << describe(ran);
  EXPECT_EQ(folder.snapshot(), expected) << attack;
  return ran.failures.contains("attack.bin") ? ran.failures.at("attack.bin") : "";
}

TEST(HostileDecoder, IsRefusedWhateverItTriesOnTheSystem) {
  for (const std::string& attack : hostile::attacksOnTheSystem()) {
    const HostileFolder folder;
    const HostileFolder home;
    const bool onProcess = attack == "trace-parent" || attack == "kill-parent" || attack == "signal-through-kernel";
    const InputFile secret = home.input("secret.txt", "the person's own");
    const std::string argument = onProcess ? std::to_string(::getpid()) : secret.url.string();
    EXPECT_THAT(sentenceFor(attack, argument, folder), HasSubstr(attack + " was refused.")) << attack;
    EXPECT_EQ(home.snapshot(), (std::map<std::string, std::string>{{"secret.txt", "the person's own"}})) << attack;
  }
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
TEST(HostileDecoder, CantFillTheMemory) {
  const HostileFolder folder;
  EXPECT_THAT(sentenceFor("fill-memory", "", folder), HasSubstr("attack.bin needs more memory than Quirn gives"));
  const HostileFolder shared;
  EXPECT_THAT(sentenceFor("fill-memory-shared", "", shared), HasSubstr("was refused."));
}
#endif

TEST(HostileDecoder, CantFillTheDisk) {
  const HostileFolder folder;
  EXPECT_THAT(sentenceFor("fill-disk", "", folder), HasSubstr("attack.bin would become far larger"));
}

TEST(HostileDecoder, CantOutgrowItsLimitWithWhatWasKeptInMemory) {
  BoxLimits limits = testLimits();
  limits.output = 4 << 10;
  Box box(hostileProgram(), limits);
  const HostileFolder folder;
  EXPECT_THAT(sentenceFor("outgrow-at-once", "", folder, box), HasSubstr("attack.bin would become far larger"));
}

TEST(HostileDecoder, CantFillTheDiskWithManyFiles) {
  const HostileFolder folder;
  const Ran ran = runIn(testBox(), boxed<DecoderOperation>(), {folder.input("attack.bin", "fill-disk-with-many")});
  EXPECT_THAT(ran.error, HasSubstr("attack.bin would become far larger"));
  EXPECT_LE(folder.snapshot().size(), 3U);
}

TEST(HostileDecoder, ThatEndsItsProcessCostsItsOwnFile) {
  for (const char* const attack : {"crash", "abort", "exit"}) {
    const HostileFolder folder;
    EXPECT_THAT(sentenceFor(attack, "", folder), HasSubstr(stopped)) << attack;
  }
}

TEST(HostileDecoder, ThatHangsIsEnded) {
  BoxLimits limits = testLimits();
  limits.silence = std::chrono::milliseconds(400);
  Box box(hostileProgram(), limits);
  const HostileFolder folder;
  EXPECT_THAT(sentenceFor("hang", "", folder, box), HasSubstr("attack.bin kept the program that reads it busy"));
}

TEST(HostileDecoder, ThatAbusesItsConnectionIsEnded) {
  for (const char* const attack :
       {"flood", "garbage", "short-message", "long-message", "long-text", "send-descriptor", "publish-unknown",
        "list-unknown", "open-unknown", "enumerate-file", "climb", "break-line", "go-back", "cancel", "cancel-by-error",
        "fail-for-others", "finish-without-output"}) {
    const HostileFolder folder;
    EXPECT_THAT(sentenceFor(attack, "", folder), HasSubstr(misbehaved)) << attack;
  }
}

TEST(HostileDecoder, CantReadFilesBesideItsInput) {
  const HostileFolder folder;
  folder.input(".ssh/id", "secret");
  EXPECT_THAT(sentenceFor("read-neighbour", ".ssh/id", folder), HasSubstr(misbehaved));
}

// One worker serves all, is replaced after each death, and nothing of it stays open.
TEST(HostileDecoder, LeavesNoDescriptorAndNoProcessBehind) {
  const HostileFolder folder;
  std::vector<InputFile> inputs;
  for (int i = 0; i < 200; ++i)
    inputs.push_back(folder.input(fmt::format("{}.bin", i), i % 20 == 7 ? "exit" : "honest " + std::to_string(i)));
  const auto openDescriptors = [] {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), std::filesystem::directory_iterator());
  };
  runIn(testBox(), boxed<DecoderOperation>(), {inputs.front()});  // what is opened once and kept
  const auto before = openDescriptors();
  const std::size_t childrenBefore = childrenOf(::getpid()).size();
  {
    Box box(hostileProgram(), testLimits());
    const Ran ran = runIn(box, boxed<DecoderOperation>(), inputs);
    EXPECT_EQ(ran.outputs.size(), 190U) << describe(ran);
    EXPECT_EQ(ran.failures.size(), 10U) << describe(ran);
    EXPECT_LE(childrenOf(::getpid()).size(),
              childrenBefore + static_cast<std::size_t>(::sysconf(_SC_NPROCESSORS_ONLN)));
  }
  EXPECT_EQ(openDescriptors(), before);
  EXPECT_EQ(childrenOf(::getpid()).size(), childrenBefore);
}

}  // namespace
}  // namespace quirn::box
