// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/progress_mirror.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace quirn::tests {
namespace {

struct Mirrored {
  explicit Mirrored(std::int64_t units) : progress(units), mirror(ProgressMirror::of(progress, queue)) {}

  platform::PlainMainQueue queue;
  Progress progress;
  std::shared_ptr<ProgressMirror> mirror;
  int updates = 0;
  Subscription counting = mirror->changed().subscribe([this] { ++updates; });
};

TEST(ProgressMirror, AThousandChangesInOneTurnAreOneUpdateWithTheLastValue) {
  Mirrored run(2000);
  run.queue.runDue();
  EXPECT_EQ(run.updates, 0) << "the initial value is what is shown already";
  for (int i = 0; i < 1000; ++i) run.progress.complete(1);
  EXPECT_EQ(run.mirror->fraction(), 0);
  run.queue.runDue();
  EXPECT_EQ(run.updates, 1);
  EXPECT_EQ(run.mirror->fraction(), 0.5);
}

TEST(ProgressMirror, AValueThatIsShownAlreadyNotifiesNobody) {
  Mirrored run(2);
  run.progress.complete(1);
  run.progress.complete(-1);
  run.queue.runDue();
  EXPECT_EQ(run.updates, 0);
}

TEST(ProgressMirror, BeginsWithTheValueOfARunUnderWay) {
  platform::PlainMainQueue queue;
  Progress progress(4);
  progress.complete(1);
  const auto mirror = ProgressMirror::of(progress, queue);
  queue.runDue();
  EXPECT_EQ(mirror->fraction(), 0.25);
}

TEST(ProgressMirror, TellsOfTheEndAndOfACancelOnce) {
  Mirrored run(1);
  run.progress.complete(1);
  run.progress.cancel();
  run.progress.cancel();
  EXPECT_FALSE(run.mirror->isFinished());
  run.queue.runDue();
  EXPECT_TRUE(run.mirror->isFinished());
  EXPECT_TRUE(run.mirror->isCancelled());
  EXPECT_EQ(run.updates, 3);
  run.progress.setTotalUnitCount(2);
  run.queue.runDue();
  EXPECT_FALSE(run.mirror->isFinished());
}

TEST(ProgressMirror, AFlushThatComesTooLateDoesNothing) {
  Mirrored run(2);
  run.progress.complete(1);
  run.mirror.reset();
  run.queue.runDue();
  run.progress.complete(1);
  EXPECT_EQ(run.updates, 0);
}

TEST(ProgressMirror, EndsOnTheNewestValueWhateverTheThreadsDo) {
  constexpr int threadCount = 8;
  constexpr int unitsEach = 2000;
  Mirrored run(threadCount * unitsEach);
  {
    std::vector<std::jthread> threads;
    for (int i = 0; i < threadCount; ++i) {
      threads.emplace_back([&run] {
        for (int unit = 0; unit < unitsEach; ++unit) run.progress.complete(1);
      });
    }
    while (run.progress.completedUnitCount() < threadCount * unitsEach) run.queue.runDue();
  }
  run.queue.runDue();
  EXPECT_EQ(run.mirror->fraction(), 1);
  EXPECT_TRUE(run.mirror->isFinished());
}

}  // namespace
}  // namespace quirn::tests
