// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/random.h"

#include <sys/random.h>

#include <cerrno>

#include "platform/file_descriptor.h"

namespace quirn::platform {

void fillRandom(std::span<std::byte> bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::getrandom(bytes.data(), bytes.size(), 0);
    if (count < 0 && errno != EINTR) throwErrno("getrandom");
    if (count > 0) bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
}

}  // namespace quirn::platform
