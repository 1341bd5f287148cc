// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Reading ZIP archives (APPNOTE.TXT) that lie in memory as a whole, mapped or loaded: with ZIP64, the methods stored
// and deflate, and WinZip's AES-256. The central directory is what counts; of the local headers only the lengths are
// used, which say where the data begins. Nothing is taken for true that isn't checked: memory grows with what really
// comes out.

#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "archive/zip_entry.h"
#include "platform/bytes.h"

namespace quirn {

// The entries in the order of the directory; those before it where the directory breaks off. Throws ZipError or
// ByteReader::OutOfBounds.
std::vector<ZipFileEntry> listZipEntries(std::span<const std::byte> bytes);

// The contents of an entry that was listed from the same bytes, checked against its CRC-32 or, if it is encrypted, its
// authentication code. Throws ZipError or ByteReader::OutOfBounds.
platform::Bytes readZipEntry(const ZipFileEntry& entry, std::optional<std::string_view> password,
                             std::span<const std::byte> bytes);

}  // namespace quirn
