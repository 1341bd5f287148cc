// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shell/after_run_banner.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace quirn::tests {
namespace {

OperationResult result(int outputs, int failures, std::optional<std::string> summary = {}) {
  OperationResult made;
  for (int i = 0; i < outputs; ++i)
    made.outputs.push_back({{}, "/out/" + std::string(1, static_cast<char>('a' + i)), {}});
  for (int i = 0; i < failures; ++i) made.failures.push_back({{}, "bad", "Couldn’t process this file."});
  made.summary = std::move(summary);
  return made;
}

RunOutcome thrown(auto error) {
  return RunOutcome(std::make_exception_ptr(error));
}

struct Row {
  const char* telling;
  RunOutcome outcome;
  BannerStyle style;
  const char* message;
};

TEST(AfterRunBanner, TellsHowTheRunEnded) {
  using enum BannerStyle;
  const Row rows[] = {
      {"what was made", RunOutcome(result(2, 0)), success, "Created a, b"},
      {"many are counted, not listed", RunOutcome(result(5, 0)), success, "Created a, b, c, +2 more"},
      {"that it ran, though no file came of it", RunOutcome(result(0, 0)), success, "Probe done."},
      {"the operation's own words come first", RunOutcome(result(1, 0, "2 of 2 verified.")), success,
       "2 of 2 verified."},
      {"and keep the weight of the failures", RunOutcome(result(1, 1, "Created 1 of 2.")), warning, "Created 1 of 2."},
      {"some are missing", RunOutcome(result(1, 2)), warning, "Probe: some files couldn’t be processed."},
      {"nothing came of it", RunOutcome(result(0, 2)), error, "Probe failed."},
      {"its own words again", RunOutcome(result(0, 1, "1 of 1 differs.")), error, "1 of 1 differs."},
      {"the person stopped it", thrown(CancellationError()), info, "Cancelled."},
      {"however it was told", thrown(OperationError::cancelled()), info, "Cancelled."},
      {"why it failed", thrown(OperationError::writeFailed("/out/a", "")), error, "Couldn't write a."},
      {"a fault of ours", thrown(std::runtime_error("index")), error, "Probe failed."},
      {"a stranger one", thrown(7), error, "Probe failed."},
  };
  for (const Row& row : rows) {
    const AfterRunBanner banner = afterRunBanner("Probe", row.outcome);
    EXPECT_EQ(banner.message, row.message) << row.telling;
    EXPECT_EQ(banner.style, row.style) << row.telling;
  }
}

}  // namespace
}  // namespace quirn::tests
