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

#include "archive/zip_aes.h"
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

// The same in steps, for those who read many entries at once and leave in place what need not be copied.

// The stored data, as a part of `bytes`.
std::span<const std::byte> zipPayloadOf(const ZipFileEntry& entry, std::span<const std::byte> bytes);

class ZipContents {
 public:
  // `payload` outlives it, where it is not encrypted.
  explicit ZipContents(std::span<const std::byte> payload) : view_(payload) {}
  explicit ZipContents(platform::Bytes own) : own_(std::move(own)), view_(own_) {}
  ZipContents(ZipContents&&) = default;
  ZipContents& operator=(ZipContents&&) = default;

  std::span<const std::byte> bytes() const { return view_; }
  platform::Bytes taken() &&;

 private:
  platform::Bytes own_;
  std::span<const std::byte> view_;  // of own_, whose place in memory moving doesn't change, or of the payload
};

// `keys` are those of an encrypted entry.
ZipContents zipContentsOf(const ZipFileEntry& entry, const std::optional<ZipAesKeys>& keys,
                          std::span<const std::byte> payload);

}  // namespace quirn
