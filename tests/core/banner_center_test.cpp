// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/banner_center.h"

#include <gtest/gtest.h>

namespace quirn::tests {
namespace {

using std::chrono::seconds;

class Banners : public testing::Test {
 protected:
  std::vector<std::string> shown() const {
    std::vector<std::string> messages;
    for (const Banner& banner : center.banners()) messages.push_back(banner.message);
    return messages;
  }
  void pass(seconds time) {
    now += time;
    queue.runDue();
  }
  using Messages = std::vector<std::string>;

  platform::PlainMainQueue::Clock::time_point now{};
  platform::PlainMainQueue queue{[this] { return now; }};
  Messages announced;
  BannerCenter center{queue, [this](const std::string& message) { announced.push_back(message); }};
  int changes = 0;
  Subscription counting = center.changed().subscribe([this] { ++changes; });
};

TEST_F(Banners, GoAwayByThemselves) {
  center.post(BannerStyle::info, "a");
  pass(seconds(3));
  center.post(BannerStyle::info, "b");
  pass(seconds(2));
  EXPECT_EQ(shown(), (Messages{"a", "b"}));
  pass(seconds(1));
  EXPECT_EQ(shown(), Messages{"b"});
  pass(seconds(3));
  EXPECT_EQ(shown(), Messages());
  EXPECT_EQ(announced, (Messages{"a", "b"}));
}

TEST_F(Banners, AFourthPushesOutTheOldestAndTheOthersKeepTheirTime) {
  for (const char* message : {"a", "b", "c", "d"}) {
    center.post(BannerStyle::success, message);
    pass(seconds(1));
  }
  EXPECT_EQ(shown(), (Messages{"b", "c", "d"}));
  pass(seconds(2));  // when "a" would have gone
  EXPECT_EQ(shown(), (Messages{"b", "c", "d"}));
  pass(seconds(1));
  EXPECT_EQ(shown(), (Messages{"c", "d"}));
}

TEST_F(Banners, OneThatIsDismissedIsGoneAndItsTimerFindsNothing) {
  center.post(BannerStyle::warning, "a", seconds(1));
  const platform::Uuid id = center.banners().front().id;
  center.dismiss(id);
  EXPECT_EQ(shown(), Messages());
  const int before = changes;
  center.dismiss(id);
  pass(seconds(2));
  EXPECT_EQ(changes, before);
}

TEST(BannerCenter, ItsTimersOutliveIt) {
  platform::PlainMainQueue::Clock::time_point now{};
  platform::PlainMainQueue queue([&] { return now; });
  std::make_unique<BannerCenter>(queue)->post(BannerStyle::error, "a");
  now += seconds(7);
  queue.runDue();
}

TEST(MainQueue, DelayedTasksComeInOrderOfTheirTime) {
  platform::PlainMainQueue queue;
  std::string order;
  queue.postAfter(std::chrono::milliseconds(20), [&] { order += "c"; });
  queue.postAfter(std::chrono::milliseconds(10), [&] { order += "b"; });
  queue.post([&] { order += "a"; });
  queue.runUntil([&] { return order.size() == 3; }, seconds(10), [] { FAIL() << "too late"; });
  EXPECT_EQ(order, "abc");
}

}  // namespace
}  // namespace quirn::tests
