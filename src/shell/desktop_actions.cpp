// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shell/desktop_actions.h"

#include <algorithm>

#include "core/input_file.h"
#include "core/shortcuts.h"

namespace quirn {

std::string actionName(std::string_view title) {
  std::string name = lowerCased(title);
  std::ranges::replace(name, ' ', '-');
  return name;
}

std::string operationOfAction(std::string_view name) {
  for (const Shortcut& shortcut : QuirnShortcuts::all()) {
    if (actionName(shortcut.title) == name) return std::string(shortcut.operationID.value_or(""));
  }
  return "";
}

}  // namespace quirn
