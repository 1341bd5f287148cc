// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The contents of ZIP entries in steps, for those who read many at once, leave in place what need not be copied, or
// meet entries too large for memory. All throw ZipError as readZipEntry() does.

#pragma once

#include <optional>
#include <span>
#include <utility>

#include "archive/byte_sink.h"
#include "archive/zip_aes.h"
#include "archive/zip_entry.h"
#include "platform/bytes.h"

namespace quirn {

// The stored data, as a part of the archive `bytes`. Throws ByteReader::OutOfBounds too.
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

// `keys` are those of an encrypted entry, as below.
ZipContents zipContentsOf(const ZipFileEntry& entry, const std::optional<ZipAesKeys>& keys,
                          std::span<const std::byte> payload);

// Hands the contents on, piece by piece and in little memory. What it hands on is checked against checksum and limit at
// the end alone, but for the code of an encrypted entry, which comes first. Throws what the sink throws.
void streamZipContents(const ZipFileEntry& entry, const std::optional<ZipAesKeys>& keys,
                       std::span<const std::byte> payload, const ByteSink& sink);

}  // namespace quirn
