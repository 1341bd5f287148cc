// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/temporary_folder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <string>

#include "platform/file_descriptor.h"

namespace quirn::platform {

std::filesystem::path privateTemporaryFolder() {
  const auto folder = std::filesystem::temp_directory_path() / ("quirn-" + std::to_string(::geteuid()));
  if (::mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) throwErrno("mkdir");
  struct stat status{};
  if (::lstat(folder.c_str(), &status) != 0) throwErrno("lstat");
  const bool isOurs =
      S_ISDIR(status.st_mode) && status.st_uid == ::geteuid() && (status.st_mode & (S_IRWXG | S_IRWXO)) == 0;
  if (!isOurs) {
    errno = EPERM;
    throwErrno("the temporary folder belongs to others");
  }
  return folder;
}

}  // namespace quirn::platform
