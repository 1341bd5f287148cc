// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a worker gives up for good before it looks at a stranger's bytes. docs/box.md tells against whom.

#pragma once

#include <string>

namespace quirn::platform {

// Closes every descriptor but the standard streams and the worker's two connections, and takes from this process, for
// good: more rights than it has, files other than the system's libraries, fonts and tables, the network, other
// processes, and every system call that a decoder doesn't need. Called once, while the process has one thread. Throws
// std::system_error or std::runtime_error where less would be locked than docs/box.md says.
void lockDown();

// What this kernel can't lock, as a sentence for the person; empty if it can all that is asked of it.
std::string lockDownGap();

}  // namespace quirn::platform
