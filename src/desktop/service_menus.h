// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The menus of file managers: "Open in Quirn" for every file, and what fits a type of file in a menu
// below it. Each takes its own form of them.

#pragma once

#include <vector>

#include "core/registry.h"
#include "desktop/generated_file.h"

namespace quirn::desktop {

// For Dolphin, Nemo and Thunar where they look for them, and beside those a script for Nautilus and
// custom actions for Thunar, which take both from the person's own folders alone.
std::vector<GeneratedFile> serviceMenus(const OperationRegistry& registry);

}  // namespace quirn::desktop
