// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The named actions that the desktop offers without the window. Desktop files and the session bus
// are made from this list.

#pragma once

#include <optional>
#include <span>
#include <string_view>

namespace quirn {

struct Shortcut {
  std::string_view title;
  std::optional<std::string_view> operationID;  // without one, the files are opened in the window
  std::string_view parameter;                   // what the files are called
  std::span<const std::string_view> phrases;    // "{app}" stands for the program's name
  std::string_view symbol;
};

class QuirnShortcuts {
 public:
  // In the order in which they are shown.
  static std::span<const Shortcut> all();
};

}  // namespace quirn
