// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/hidden_name.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>

#include "platform/uuid.h"

namespace quirn::platform {
namespace {

constexpr std::string_view prefix = ".quirn-";
constexpr std::string_view suffix = ".partial";
constexpr std::size_t uuidLength = 36;

}  // namespace

std::string hiddenName() {
  return std::string(prefix) + Uuid::random().text() + std::string(suffix);
}

bool isHiddenName(std::string_view name) {
  return name.size() == prefix.size() + uuidLength + suffix.size() && name.starts_with(prefix) &&
         name.ends_with(suffix) &&
         name.substr(prefix.size(), uuidLength).find_first_not_of("0123456789abcdef-") == std::string_view::npos;
}

bool lock(const FileDescriptor& descriptor) {
  return ::flock(descriptor.number(), LOCK_EX | LOCK_NB) == 0;
}

bool isStillNamed(int folder, const std::string& name, const FileDescriptor& descriptor) {
  struct stat named{};
  struct stat opened{};
  return ::fstatat(folder, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
         ::fstat(descriptor.number(), &opened) == 0 && named.st_dev == opened.st_dev && named.st_ino == opened.st_ino;
}

// Where the file system can't, a second link does the same; where it has no links either (some network shares), and for
// a folder, the look before the rename leaves a gap that only another program making the very same name at the same
// moment could fall into.
bool renameWithoutReplacing(int folder, const std::string& from, const std::string& to) {
  if (::renameat2(folder, from.c_str(), folder, to.c_str(), RENAME_NOREPLACE) == 0) return true;
  if (errno == EEXIST) return false;
  if (errno != EINVAL && errno != ENOSYS) throwErrno("renameat2");
  if (::linkat(folder, from.c_str(), folder, to.c_str(), 0) == 0) {
    ::unlinkat(folder, from.c_str(), 0);
    return true;
  }
  if (errno == EEXIST) return false;
  if (::faccessat(folder, to.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0) return false;
  if (::renameat(folder, from.c_str(), folder, to.c_str()) != 0) throwErrno("rename");
  return true;
}

}  // namespace quirn::platform
