// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Sizes of files as a person reads them.

#pragma once

#include <cstdint>
#include <string>

namespace quirn {

// In decimal units, as file managers show them: "Zero KB", "1 byte", "512 bytes", "12 KB", "1.2 MB", "1.23 GB".
// Kilobytes are whole, megabytes have one decimal at most, larger units two. Negative counts are shown as such.
std::string byteCountText(std::int64_t bytes);

}  // namespace quirn
