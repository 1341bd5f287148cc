// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <QTimer>
#include <chrono>
#include <ctime>

#include "platform/sanitized.h"
#include "window/window_under_test.h"

namespace quirn::tests {
namespace {

// The processor time of the calling thread: what it did itself, however busy the machine is with others.
std::chrono::nanoseconds ownTime() {
  timespec time{};
  ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

// Beats on the interface thread, and counts how often the thread has worked for longer than `patience`
// between two beats.
class Heartbeat {
 public:
  explicit Heartbeat(std::chrono::milliseconds patience) {
    timer_.setInterval(5);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this, patience] {
      const auto now = ownTime();
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
  std::chrono::nanoseconds last_ = ownTime();
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
  EXPECT_EQ(heart.lateBeats, 0) << "of " << heart.beats << " beats";
}

}  // namespace
}  // namespace quirn::tests
