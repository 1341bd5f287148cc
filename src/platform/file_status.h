// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What stands at a location, in one look.

#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>

namespace quirn::platform {

struct FileStatus {
  enum class Kind {
    none,  // nothing, or nothing that can be looked at
    file,
    folder,
    other,  // a pipe, socket or device
  };
  Kind kind = Kind::none;
  std::int64_t size = 0;  // bytes, of a file
};

// Follows links. Opens nothing.
FileStatus statusAt(const std::filesystem::path& path);

// Whether this process may read it, as far as that can be told without opening it.
bool isReadable(const std::filesystem::path& path);

// The size in bytes of an open file; 0 where that can't be told.
std::int64_t sizeOfOpen(int descriptor);

// What an archive keeps of a file.
struct FileAttributes {
  std::uint16_t permissions = 0644;
  std::chrono::sys_seconds modified;
};

// Of an open file; nothing where that can't be told.
std::optional<FileAttributes> attributesOfOpen(int descriptor);

// Sets the date of the last change of an open file. A date that its file system can't hold is not set.
void setModified(int descriptor, std::chrono::sys_seconds modified);

}  // namespace quirn::platform
