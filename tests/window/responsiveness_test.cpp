// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <QTimer>
#include <chrono>

#include "platform/sanitized.h"
#include "window/window_under_test.h"

namespace quirn::tests {
namespace {

// Counts how often the interface thread came to its timer late: something held it for longer than
// `patience`. A machine that others use as well may stop everybody, so a few times are nobody's fault.
class Heartbeat {
 public:
  explicit Heartbeat(std::chrono::milliseconds patience) {
    timer_.setInterval(5);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this, patience] {
      const auto now = std::chrono::steady_clock::now();
      if (now - last_ > patience) ++lateBeats;
      ++beats;
      last_ = now;
    });
    timer_.start();
  }
  int beats = 0;
  int lateBeats = 0;

 private:
  QTimer timer_;
  std::chrono::steady_clock::time_point last_ = std::chrono::steady_clock::now();
};

TEST(Responsiveness, TheInterfaceIsNeverHeldDuringARun) {
  constexpr int fileCount = 400;
  WindowUnderTest test;
  std::vector<std::filesystem::path> files;
  for (int i = 0; i < fileCount; ++i)
    files.push_back(test.folder.file(fmt::format("f{}.bin", i), std::string(100'000, 'x')));
  ASSERT_TRUE(test.dropAndWait(files));
  ASSERT_TRUE(test.choose("operations", "Hash Files"));
  // What a person sees as one piece; built with sanitizers everything takes longer.
  Heartbeat heart(std::chrono::milliseconds(platform::isSanitized ? 500 : 50));
  ASSERT_TRUE(test.click("run"));
  ASSERT_TRUE(test.wait([&] { return !test.session().isActive() && heart.beats > 10; }));
  EXPECT_EQ(test.session().outputs().size(), static_cast<std::size_t>(fileCount));
  EXPECT_LE(heart.lateBeats, heart.beats / 10 + 2) << "of " << heart.beats << " beats";
}

}  // namespace
}  // namespace quirn::tests
