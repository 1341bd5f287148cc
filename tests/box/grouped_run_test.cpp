// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Small files go to a worker several at once.

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <thread>

#include "box/hostile_runs.h"
#include "hostile/hostile_operations.h"

namespace quirn::box {
namespace {

using hostile::DecoderOperation;
using testing::HasSubstr;

constexpr int fileCount = 60;  // with four processors, the groups of each grow to eight

// Groups grow to their full size, however slow the machine is.
BoxLimits groupingLimits() {
  BoxLimits limits = testLimits();
  limits.grouping.time = std::chrono::hours(1);
  return limits;
}

std::string nameOf(int number) {
  return fmt::format("{:02}.bin", number);
}

// Files that are honest but for those that are told otherwise.
std::vector<InputFile> filesWith(const HostileFolder& folder, const std::map<int, std::string>& attacks) {
  std::vector<InputFile> files;
  for (int i = 0; i < fileCount; ++i) {
    const auto attack = attacks.find(i);
    files.push_back(folder.input(nameOf(i), attack == attacks.end() ? fmt::format("honest {}", i) : attack->second));
  }
  return files;
}

void expectOnlyToFail(const Ran& ran, const std::map<int, std::string>& attacks, const std::string& sentence) {
  EXPECT_EQ(std::ssize(ran.outputs), fileCount - std::ssize(attacks)) << describe(ran);
  EXPECT_EQ(ran.failures.size(), attacks.size()) << describe(ran);
  for (int i = 0; i < fileCount; ++i) {
    if (attacks.contains(i)) {
      EXPECT_THAT(ran.failures.contains(nameOf(i)) ? ran.failures.at(nameOf(i)) : "none", HasSubstr(sentence)) << i;
    } else {
      EXPECT_THAT(ran.outputs,
                  testing::Contains(testing::Pair(fmt::format("{:02} (decoded).txt", i), fmt::format("honest {}", i))));
    }
  }
}

TEST(GroupedRun, AWorkerThatEndsCostsItsOwnFileWhereverItStands) {
  Box box(hostileProgram(), groupingLimits());
  for (const int place : {0, 3, 7, 12, 20, 31, 59}) {
    const HostileFolder folder;
    const std::map<int, std::string> attacks{{place, "exit"}};
    expectOnlyToFail(runIn(box, boxed<DecoderOperation>(), filesWith(folder, attacks)), attacks,
                     "is damaged in a way that stopped the program that read it.");
  }
}

TEST(GroupedRun, EveryKindOfAttackCostsItsOwnFile) {
  const std::map<std::string, std::string> sentences{
      {"crash", "is damaged in a way that stopped"},
      {"garbage", "ask for what it was not given"},
      {"flood", "ask for what it was not given"},
      {"list-unknown", "ask for what it was not given"},
      {"finish-without-output", "ask for what it was not given"},
      {"cancel", "ask for what it was not given"},
      {"fill-disk", "would become far larger"},
  };
  Box box(hostileProgram(), groupingLimits());
  for (const auto& [attack, sentence] : sentences) {
    const HostileFolder folder;
    const std::map<int, std::string> attacks{{25, attack}};
    expectOnlyToFail(runIn(box, boxed<DecoderOperation>(), filesWith(folder, attacks)), attacks, sentence);
  }
}

TEST(GroupedRun, AHangCostsItsOwnFile) {
  BoxLimits limits = groupingLimits();
  limits.silence = std::chrono::seconds(1);
  Box box(hostileProgram(), limits);
  const HostileFolder folder;
  const std::map<int, std::string> attacks{{25, "hang"}};
  expectOnlyToFail(runIn(box, boxed<DecoderOperation>(), filesWith(folder, attacks)), attacks,
                   "kept the program that reads it busy");
}

TEST(GroupedRun, SeveralAttacksInOneGroupCostTheirOwnFiles) {
  Box box(hostileProgram(), groupingLimits());
  const HostileFolder folder;
  const std::map<int, std::string> attacks{{24, "exit"}, {25, "exit"}, {26, "exit"}, {30, "exit"}};
  expectOnlyToFail(runIn(box, boxed<DecoderOperation>(), filesWith(folder, attacks)), attacks, "is damaged in a way");
}

TEST(GroupedRun, NothingIsPublishedTwice) {
  Box box(hostileProgram(), groupingLimits());
  const HostileFolder folder;
  const std::map<int, std::string> attacks{{25, "publish-and-exit"}};
  expectOnlyToFail(runIn(box, boxed<DecoderOperation>(), filesWith(folder, attacks)), attacks, "is damaged in a way");
  const auto files = folder.snapshot();
  EXPECT_EQ(std::ranges::count_if(files, [](const auto& file) { return file.first.starts_with("25 (part)"); }), 1);
}

TEST(GroupedRun, EndsAsItWouldInProcess) {
  const auto run = [](Box& box, Placement placement) {
    const HostileFolder folder;
    std::vector<InputFile> files = filesWith(folder, {{17, "no-such-attack"}, {40, "no-such-attack"}});
    std::filesystem::remove(files[33].url);
    const auto context = std::make_shared<LocalContext>(std::ssize(files), folder.path() / "out");
    Ran ran = runIn(box, OperationType::of<DecoderOperation>().placedIn(placement, "hostile"), files, context);
    ran.status.clear();                         // of the file that happened to be the last
    ran.summary.resize(ran.summary.find(':'));  // behind it, names in the order in which files happened to end
    return ran;
  };
  Box box(hostileProgram(), groupingLimits());
  const Ran inProcess = run(box, Placement::inProcess);
  const Ran inWorkers = run(box, Placement::boxed);
  EXPECT_TRUE(inProcess == inWorkers) << describe(inProcess) << "\n" << describe(inWorkers);
  EXPECT_EQ(inWorkers.failures.size(), 3U);
}

TEST(GroupedRun, IsCancelledWithFilesWaitingBehind) {
  for (const char* const attack : {"wait", "hang"}) {
    Box box(hostileProgram(), groupingLimits());
    const HostileFolder folder;
    const auto context = std::make_shared<LocalContext>(fileCount, folder.path() / "out");
    std::thread canceller([&] {
      EXPECT_TRUE(soon([&] { return context->currentStatus() == "Decoding 25.bin…"; }));
      context->progress().cancel();
    });
    const std::vector<InputFile> files = filesWith(folder, {{25, attack}, {26, attack}, {27, attack}, {28, attack}});
    const Ran ran = runIn(box, boxed<DecoderOperation>(), files, context);
    canceller.join();
    EXPECT_EQ(ran.error, "cancelled") << attack;
    for (const auto& [name, content] : folder.snapshot()) {
      EXPECT_THAT(content, testing::AnyOf(testing::StartsWith("honest"), attack));
      EXPECT_FALSE(name.starts_with("out/.quirn-")) << name;
    }
  }
}

}  // namespace
}  // namespace quirn::box
