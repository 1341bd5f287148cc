// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/zip_reader.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <limits>

#include "archive/byte_reader.h"
#include "platform/compression.h"

namespace quirn {
namespace {

using platform::Bytes;

[[noreturn]] void throwCorrupt(std::string_view what, const ZipFileEntry& entry) {
  throw ZipError(ZipError::Kind::corrupt, fmt::format("{}{}", what, entry.name));
}

ByteReader localHeaderOf(const ZipFileEntry& entry, std::span<const std::byte> bytes) {
  constexpr std::uint32_t signature = 0x04034B50;
  ByteReader reader(bytes, entry.localHeaderOffset);
  if (reader.left() < sizeof signature || reader.read32() != signature) throwCorrupt("bad local header for ", entry);
  return reader;
}

// What inflating may give: sizes in headers are a ceiling, and a generous one.
std::uint64_t outputLimitOf(const ZipFileEntry& entry) {
  constexpr std::uint64_t slack = 65536;
  constexpr std::uint64_t most = std::numeric_limits<std::int64_t>::max();
  return entry.uncompressedSize > most - slack ? most : entry.uncompressedSize + slack;
}

ZipContents unpacked(const ZipFileEntry& entry, ZipContents data) {
  switch (entry.realMethod) {
    case zipStored: return data;
    case zipDeflated: {
      auto plain =
          platform::rawDeflateTransform(data.bytes(), outputLimitOf(entry), platform::DeflateDirection::expand);
      if (!plain) throwCorrupt("inflate failed or oversized: ", entry);
      return ZipContents(std::move(*plain));
    }
    default: throwCorrupt(fmt::format("unsupported method {}: ", entry.realMethod), entry);
  }
}

ZipContents deciphered(std::span<const std::byte> payload, const std::optional<ZipAesKeys>& keys) {
  auto plain = keys ? decrypted(payload, *keys) : std::nullopt;
  if (!plain) throw ZipError(ZipError::Kind::wrongPassword);
  return ZipContents(std::move(*plain));
}

}  // namespace

Bytes ZipContents::taken() && {
  return own_.empty() ? Bytes(view_.begin(), view_.end()) : std::move(own_);
}

std::span<const std::byte> zipPayloadOf(const ZipFileEntry& entry, std::span<const std::byte> bytes) {
  constexpr std::size_t fieldsBeforeLengths = 22;
  ByteReader reader = localHeaderOf(entry, bytes);
  reader.skip(fieldsBeforeLengths);
  const std::uint16_t nameLength = reader.read16();
  const std::uint16_t extraLength = reader.read16();
  reader.skip(nameLength);
  reader.skip(extraLength);
  return reader.read(entry.compressedSize);
}

ZipContents zipContentsOf(const ZipFileEntry& entry, const std::optional<ZipAesKeys>& keys,
                          std::span<const std::byte> payload) {
  if (entry.isEncrypted) return unpacked(entry, deciphered(payload, keys));
  ZipContents plain = unpacked(entry, ZipContents(payload));
  if (platform::crc32Of(plain.bytes()) != entry.crc32) throwCorrupt("CRC mismatch: ", entry);
  return plain;
}

Bytes readZipEntry(const ZipFileEntry& entry, std::optional<std::string_view> password,
                   std::span<const std::byte> bytes) {
  const auto payload = zipPayloadOf(entry, bytes);
  std::optional<ZipAesKeys> keys;
  if (entry.isEncrypted) {
    if (password.value_or("").empty()) throw ZipError(ZipError::Kind::needsPassword);
    if (const auto salt = zipSaltOf(payload)) keys = zipAesKeys(*password, std::span(&*salt, 1)).front();
  }
  return zipContentsOf(entry, keys, payload).taken();
}

}  // namespace quirn
