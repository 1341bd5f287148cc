// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/file_descriptor.h"

#include <sys/resource.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

namespace quirn::platform {

FileDescriptor::~FileDescriptor() {
  if (number_ >= 0) ::close(number_);
}

std::size_t descriptorLimit() {
  rlimit limit{};
  if (::getrlimit(RLIMIT_NOFILE, &limit) != 0) throwErrno("getrlimit");
  return limit.rlim_cur;
}

void throwErrno(const char* what) {
  throw std::system_error(errno, std::generic_category(), what);
}

void writeAll(int descriptor, std::span<const std::byte> bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::write(descriptor, bytes.data(), bytes.size());
    if (count < 0 && errno != EINTR) throwErrno("write");
    if (count > 0) bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
}

}  // namespace quirn::platform
