// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>
#include <gtest/gtest.h>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <thread>

#include "box/hostile_runs.h"
#include "hostile/attacks.h"
#include "hostile/hostile_operations.h"

namespace quirn::box {
namespace {

// A front end that runs a batch over and over until it is killed, or once, until it changes a file for that time.
pid_t startFrontEnd(const HostileFolder& folder, const std::vector<InputFile>& inputs, int lastCall = 0) {
  std::vector<std::string> words{hostileProgram().parent_path() / "quirn_hostile_front_end", std::to_string(lastCall),
                                 hostileProgram(), folder.path() / "out"};
  for (const InputFile& input : inputs) words.push_back(input.url);
  std::vector<char*> pointers;
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  pid_t child = -1;
  EXPECT_EQ(::posix_spawn(&child, words.front().c_str(), nullptr, nullptr, pointers.data(), environ), 0);
  return child;
}

TEST(KilledFrontEnd, LeavesNoWorkerEvenOneThatComputes) {
  const HostileFolder folder;
  const pid_t frontEnd = startFrontEnd(folder, {folder.input("a.bin", "hang")});
  std::vector<int> workers;
  EXPECT_TRUE(soon([&] { return !(workers = childrenOf(frontEnd)).empty(); }));
  ::kill(frontEnd, SIGKILL);
  ::waitpid(frontEnd, nullptr, 0);
  for (const int worker : workers) EXPECT_TRUE(soon([&] { return !isAlive(worker); })) << worker;
}

TEST(KilledFrontEnd, LeavesNoPartOfAnOutputUnderAName) {
  for (int delay = 1; delay <= 60; delay += 3) {
    const HostileFolder folder;
    std::vector<InputFile> inputs;
    for (int i = 0; i < 20; ++i) inputs.push_back(folder.input(fmt::format("{}.bin", i), "honest whole"));
    const pid_t frontEnd = startFrontEnd(folder, inputs);
    // Some runs have begun; the moment is what is varied.
    EXPECT_TRUE(soon([&] { return std::filesystem::exists(folder.path() / "out"); }));
    std::this_thread::sleep_for(std::chrono::milliseconds(delay));
    const std::vector<int> workers = childrenOf(frontEnd);
    ::kill(frontEnd, SIGKILL);
    ::waitpid(frontEnd, nullptr, 0);
    for (const int worker : workers) EXPECT_TRUE(soon([&] { return !isAlive(worker); }));
    for (const auto& [name, content] : folder.snapshot()) EXPECT_EQ(content, "honest whole") << name << delay;
    // On a file system without unnamed files, the next run sweeps what was left.
    runIn(testBox(), boxed<hostile::DecoderOperation>(), {inputs.front()},
          std::make_shared<LocalContext>(1, folder.path() / "out"));
    for (const auto& [name, content] : folder.snapshot()) EXPECT_FALSE(name.starts_with("out/.quirn-")) << name;
  }
}

const std::string script = "file a/b.txt one\nlarge a/c.bin 100000\nlink l a\nfile a/b.txt two";

// What the outputs hold that are there under their names.
void expectWholeOutputs(const HostileFolder& folder, int call) {
  const auto files = folder.snapshot();
  for (const auto& [name, content] : files) {
    const bool isListed = name.starts_with("out/") && !name.starts_with("out/.quirn-");
    if (!isListed || !name.ends_with("(decoded).txt")) continue;
    EXPECT_EQ(content, "honest whole") << name << call;
  }
  if (!std::filesystem::exists(folder.path() / "out/x (unpacked)")) return;
  EXPECT_EQ(files.at("out/x (unpacked)/a/b.txt"), "two") << call;
  EXPECT_EQ(files.at("out/x (unpacked)/a/c.bin").size(), 100'000U) << call;
}

TEST(KilledFrontEnd, LeavesNoPartOfAnOutputWhicheverCallItDiesAt) {
  int status = -1;
  int call = 0;
  while (++call < 1000 && status != 0) {
    const HostileFolder folder;
    std::vector<InputFile> inputs{folder.input("x.arc", script)};
    for (int i = 0; i < 3; ++i) inputs.push_back(folder.input(fmt::format("{}.bin", i), "honest whole"));
    ::waitpid(startFrontEnd(folder, inputs, call), &status, 0);
    EXPECT_TRUE(status == 0 || WTERMSIG(status) == SIGKILL);
    expectWholeOutputs(folder, call);
    runIn(testBox(), boxed<hostile::DecoderOperation>(), {inputs.back()},
          std::make_shared<LocalContext>(1, folder.path() / "out"));
    for (const auto& entry : std::filesystem::directory_iterator(folder.path() / "out"))
      EXPECT_FALSE(entry.path().filename().string().starts_with(".quirn-")) << call;
  }
  EXPECT_EQ(status, 0);
  EXPECT_GT(call, 15);
}

// The attacks that are refused in a worker do what they say where nobody refuses them.
TEST(Attack, SucceedsOutsideTheBox) {
  for (const char* const attack :
       {"read-home-file", "read-from-thread",  "look-without-reading", "write-beside",  "write-over",
        "cut-by-path",    "change-mode",       "make-folder",          "link",          "rename",
        "open-socket",    "open-local-socket", "kill-parent",          "start-program", "io-uring",
        "open-device",    "become-traceable",  "outlive-parent",       "hide-memory",   "signal-through-kernel"}) {
    const HostileFolder folder;
    const bool onProcess =
        std::string_view(attack).starts_with("kill") || std::string_view(attack).starts_with("signal");
    const InputFile secret = folder.input("secret.txt", "own");
    const std::string argument = onProcess ? std::to_string(::getpid()) : secret.url.string();
    const InputFile input = folder.input("attack.bin", "");
    LocalContext context(1, std::nullopt);
    EXPECT_TRUE(hostile::attemptAttack(attack, argument, input, context)) << attack;
  }
}

}  // namespace
}  // namespace quirn::box
