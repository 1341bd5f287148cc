// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the person is told when a run has ended. docs/session.md has the table.

#pragma once

#include <string>
#include <string_view>

#include "core/banner_center.h"
#include "core/runner.h"

namespace quirn {

struct AfterRunBanner {
  BannerStyle style = BannerStyle::info;
  std::string message;
};

AfterRunBanner afterRunBanner(std::string_view displayName, const RunOutcome& outcome);

}  // namespace quirn
