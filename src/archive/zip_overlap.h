// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Entries of a ZIP archive that share bytes. No honest archive has any; with them a small file can hold petabytes, or
// show different programs different contents.

#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "archive/zip_entry.h"

namespace quirn {

// Whether any two of the entries, from local header to the end of data, overlap in the archive `bytes`. Entries that
// don't lie in it are left to those who read them. Takes O(n log n).
bool haveOverlaps(const std::vector<ZipFileEntry>& entries, std::span<const std::byte> bytes);

}  // namespace quirn
