// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/progress_line.h"

#include <fmt/format.h>

#include "cli/console.h"
#include "platform/text.h"

namespace quirn::cli {

void ProgressLine::redraw(OperationContext& context) {
  if (visibility_ == Visibility::hidden) return;
  constexpr int barLength = 24;
  const double fraction = context.progress().fractionCompleted();
  const int filled = static_cast<int>(fraction * barLength);
  const std::string line = fmt::format("{:█<{}}{:░<{}} {:3.0f}%  {}", "", filled, "", barLength - filled,
                                       fraction * 100, platform::displayText(context.currentStatus()));
  // A line as wide as the terminal would wrap, and could not be taken back.
  std::string fitting = fittingColumns(line, terminalWidth() - 1);
  if (fitting == drawn_) return;
  drawn_ = std::move(fitting);
  draw("\r\x1B[K" + drawn_);
}

void ProgressLine::clear() {
  if (!drawn_.empty()) draw("\r\x1B[K");
  drawn_.clear();
}

}  // namespace quirn::cli
