// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What kind of file something is, from the desktop's shared MIME database (the freedesktop.org
// standard).

#pragma once

#include <filesystem>
#include <string>

namespace quirn::platform {

// All of this may be called from any thread.

// The MIME type that the name alone suggests, "application/octet-stream" where it suggests none.
std::string mimeTypeOfName(const std::filesystem::path& name);

// The MIME type of a regular file: that of its name, and where the name suggests none, or several
// ("talk.ts" is a translation, a program or a film), that of its first bytes. A file that can't be
// read has the type of its name.
std::string mimeTypeOfFile(const std::filesystem::path& file);

// Whether `type` is `ancestor` or a subtype of it: "text/csv" is a "text/plain".
bool isMimeSubtype(const std::string& type, const std::string& ancestor);

}  // namespace quirn::platform
