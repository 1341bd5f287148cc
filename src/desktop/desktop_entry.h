// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the desktop's launcher reads: the entry with its types and actions, as in freedesktop.org's
// Desktop Entry Specification, and the service by which the session bus starts Quirn.

#pragma once

#include <string>
#include <vector>

#include "core/registry.h"
#include "desktop/generated_file.h"

namespace quirn::desktop {

// The name of the entry, and with it that of the icon and on the bus.
inline constexpr const char* applicationID = "com.morvanta.Quirn";

GeneratedFile desktopEntry(const OperationRegistry& registry);
// `program` is where the program is installed.
GeneratedFile busService(const std::string& program);

// A value of a key: no line ends or other controls, a backslash before what a reader would take for more.
std::string entryValue(std::string_view text);

}  // namespace quirn::desktop
