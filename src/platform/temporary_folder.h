// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A folder for files that may go away when the machine starts anew.

#pragma once

#include <filesystem>

namespace quirn::platform {

// "quirn-{user}" in the system's temporary folder, made if it is missing, for this user alone.
// Everybody may write beside it, so one that others own, or can get into, or that is a link, is
// not used: that throws std::system_error.
std::filesystem::path privateTemporaryFolder();

}  // namespace quirn::platform
