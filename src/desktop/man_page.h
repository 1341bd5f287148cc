// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The manual page quirn(1), in the troff macros of man(7).

#pragma once

#include "core/registry.h"
#include "desktop/generated_file.h"

namespace quirn::desktop {

GeneratedFile manPage(const OperationRegistry& registry);

// A text as troff shows it: no line of it is a request, no backslash or hyphen is read as more.
std::string troff(std::string_view text);

}  // namespace quirn::desktop
