// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <cstdint>
#include <cstdlib>
#include <span>

#include "archive/tar.h"

// Lists to an end; every entry's data begins inside the archive.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  for (const quirn::TarEntry& entry : quirn::listTarEntries(std::as_bytes(std::span(data, size)))) {
    if (entry.name.empty() || entry.dataOffset < 0 || static_cast<std::size_t>(entry.dataOffset) > size) std::abort();
  }
  return 0;
}
