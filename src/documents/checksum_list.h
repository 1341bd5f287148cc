// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Checksum lists as text, in the two forms that the usual programs write: GNU "{hash}  {name}" and
// BSD
// "{ALGORITHM} ({name}) = {hash}".

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quirn {

struct ChecksumEntry {
  std::string hash;  // 32, 40, 64 or 128 hex digits, as written
  std::string name;  // a file name or relative path, as written
};

// The entries in order. Lines that are neither form, comments among them, are passed over.
std::vector<ChecksumEntry> parseChecksumList(std::string_view text);

// One line in the GNU form. A name with a line break takes that form's escapes, behind a leading
// backslash, so that the line stays one line.
std::string checksumLine(std::string_view hash, std::string_view name);

}  // namespace quirn
