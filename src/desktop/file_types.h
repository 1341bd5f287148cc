// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The types of files that desktops know, and which operations take them: asked of the operations
// themselves, with a made-up file of each type.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "core/registry.h"

namespace quirn::desktop {

// The MIME types that an operation runs on, one file or several; in a fixed order. Empty where it takes
// every type, or none.
std::vector<std::string> typesOf(const OperationType& type);

// The types that some operation is made for.
std::vector<std::string> typesOfAny(const OperationRegistry& registry);

// The operations that a menu of files can offer: they are built, and need nobody to work in them.
std::vector<const OperationType*> menuOperations(const OperationRegistry& registry);

}  // namespace quirn::desktop
