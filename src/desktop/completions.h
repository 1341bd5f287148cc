// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What shells complete after "quirn": the commands and their options, operations, tools, and for an
// operation the settings and what each accepts.

#pragma once

#include <vector>

#include "core/registry.h"
#include "desktop/generated_file.h"

namespace quirn::desktop {

// For bash, zsh and fish, where their packages look for them.
std::vector<GeneratedFile> completions(const OperationRegistry& registry);

}  // namespace quirn::desktop
