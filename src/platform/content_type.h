// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What kind of file a name stands for, from the desktop's shared MIME database (the freedesktop.org
// standard).

#pragma once

#include <filesystem>
#include <string>

namespace quirn::platform {

// The MIME type that the name alone suggests, "application/octet-stream" where it suggests none.
// May be called from any thread.
std::string mimeTypeOfName(const std::filesystem::path& name);

// Whether `type` is `ancestor` or a subtype of it: "text/csv" is a "text/plain".
bool isMimeSubtype(const std::string& type, const std::string& ancestor);

}  // namespace quirn::platform
