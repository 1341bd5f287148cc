// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Files that Quirn makes of what it is handed without a name: pasted images and scans.

#pragma once

#include <chrono>
#include <cstddef>
#include <filesystem>
#include <span>
#include <string_view>

namespace quirn {

// Writes `bytes` as "{word} {date}.{extension}" into `folder`, made if it is missing, with the date
// as "2026-03-09 at 14.05.33" in the local time. " ({n})" stands before the extension where that
// name is taken. Throws OperationError: writeFailed.
std::filesystem::path writeDatedFile(const std::filesystem::path& folder, std::string_view word,
                                     std::string_view extension, std::chrono::system_clock::time_point date,
                                     std::span<const std::byte> bytes);

}  // namespace quirn
