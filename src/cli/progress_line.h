// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A bar with the run's status line, redrawn in place on a terminal.

#pragma once

#include <string>

#include "core/operation_context.h"

namespace quirn::cli {

class ProgressLine {
 public:
  enum class Visibility { shown, hidden };

  explicit ProgressLine(Visibility visibility) : visibility_(visibility) {}
  ~ProgressLine() { clear(); }
  ProgressLine(const ProgressLine&) = delete;
  ProgressLine& operator=(const ProgressLine&) = delete;

  void redraw(OperationContext& context);

  // Takes the line away, so that other text can come.
  void clear();

 private:
  Visibility visibility_;
  std::string drawn_;
};

}  // namespace quirn::cli
