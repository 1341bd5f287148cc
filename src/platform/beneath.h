// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Opening a name that may come from a stranger, inside a folder and never outside. The kernel resolves the name in one
// step that nobody can race (openat2 with RESOLVE_BENEATH): a link may lead elsewhere inside the folder. Where the
// kernel or a container lacks that, the name is walked part by part and no link is followed at all.

#pragma once

#include <string>

#include "platform/file_descriptor.h"

namespace quirn::platform {

// `flags` as for open(), without O_CREAT. Throws std::system_error, with EXDEV for a name that leads out of the folder.
FileDescriptor openBeneath(int folder, const std::string& name, int flags);

}  // namespace quirn::platform
