// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/file_status.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>

namespace quirn::platform {

FileStatus statusAt(const std::filesystem::path& path) {
  struct stat status{};
  if (::stat(path.c_str(), &status) != 0) return {};
  if (S_ISDIR(status.st_mode)) return {FileStatus::Kind::folder, 0};
  if (S_ISREG(status.st_mode)) return {FileStatus::Kind::file, status.st_size};
  return {FileStatus::Kind::other, 0};
}

bool isReadable(const std::filesystem::path& path) {
  return ::faccessat(AT_FDCWD, path.c_str(), R_OK, AT_EACCESS) == 0;
}

std::int64_t sizeOfOpen(int descriptor) {
  struct stat status{};
  return ::fstat(descriptor, &status) == 0 ? status.st_size : 0;
}

std::optional<FileAttributes> attributesOfOpen(int descriptor) {
  constexpr mode_t permissionBits = 07777;
  struct stat status{};
  if (::fstat(descriptor, &status) != 0) return std::nullopt;
  return FileAttributes{static_cast<std::uint16_t>(status.st_mode & permissionBits),
                        std::chrono::sys_seconds(std::chrono::seconds(status.st_mtim.tv_sec))};
}

void setModified(int descriptor, std::chrono::sys_seconds modified) {
  const std::array<timespec, 2> times{timespec{0, UTIME_OMIT}, timespec{modified.time_since_epoch().count(), 0}};
  ::futimens(descriptor, times.data());
}

}  // namespace quirn::platform
