// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Outputs in the making that need a name are hidden siblings of what they become, ".quirn-{uuid}.partial", locked while
// their owner lives: files where the file system has none without a name, and folders.

#pragma once

#include <string>
#include <string_view>

#include "platform/file_descriptor.h"

namespace quirn::platform {

// A new hidden name.
std::string hiddenName();

// Whether this is such a name.
bool isHiddenName(std::string_view name);

// Takes the lock that says that its owner lives; false if somebody else has it.
bool lock(const FileDescriptor& descriptor);

// True while `name` in `folder` still leads to what is open: a sweep may have come between its creation and its lock.
bool isStillNamed(int folder, const std::string& name, const FileDescriptor& descriptor);

// rename() in `folder` that refuses to replace: false, with nothing changed, if `to` is there. Throws
// std::system_error.
bool renameWithoutReplacing(int folder, const std::string& from, const std::string& to);

}  // namespace quirn::platform
