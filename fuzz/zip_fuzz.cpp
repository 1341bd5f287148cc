// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <cstdint>
#include <cstdlib>
#include <span>

#include "archive/byte_reader.h"
#include "archive/zip_reader.h"

namespace {

constexpr std::size_t mostEntries = 50;
constexpr std::uint64_t slack = 65536;

void readAll(std::span<const std::byte> bytes) {
  std::size_t count = 0;
  for (const quirn::ZipFileEntry& entry : quirn::listZipEntries(bytes)) {
    if (++count > mostEntries) return;
    try {
      const auto data = quirn::readZipEntry(entry, "password", bytes);
      if (data.size() > slack && data.size() > bytes.size() && data.size() - slack > entry.uncompressedSize)
        std::abort();
    } catch (const quirn::ZipError&) {
      continue;
    } catch (const quirn::ByteReader::OutOfBounds&) {
      continue;
    }
  }
}

}  // namespace

// Lists and reads to an end, with no more than an entry declares.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  try {
    readAll(std::as_bytes(std::span(data, size)));
  } catch (const quirn::ZipError&) {
    return 0;
  } catch (const quirn::ByteReader::OutOfBounds&) {
    return 0;
  }
  return 0;
}
