// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/gzip.h"

#include <algorithm>

#include "archive/byte_reader.h"
#include "archive/byte_writer.h"
#include "platform/compression.h"

namespace quirn {
namespace {

using platform::Bytes;

constexpr std::size_t headerSize = 10;
constexpr std::size_t trailerSize = 8;
constexpr std::uint8_t deflateMethod = 8;

void skipText(ByteReader& reader) {
  while (reader.readByte() != 0) {
  }
}

// Behind the fixed part of the header.
void skipOptionalFields(ByteReader& reader, unsigned flags) {
  constexpr unsigned headerChecksum = 1 << 1;
  constexpr unsigned extra = 1 << 2;
  constexpr unsigned name = 1 << 3;
  constexpr unsigned comment = 1 << 4;
  if ((flags & extra) != 0) reader.skip(reader.read16());
  if ((flags & name) != 0) skipText(reader);
  if ((flags & comment) != 0) skipText(reader);
  if ((flags & headerChecksum) != 0) reader.skip(2);
}

}  // namespace

Bytes gzipHeader(std::chrono::sys_seconds modified) {
  constexpr std::uint8_t unknownSystem = 255;
  const auto seconds = std::clamp<std::int64_t>(modified.time_since_epoch().count(), 0, 0xFFFFFFFF);
  ByteWriter header;
  header.put8(0x1F).put8(0x8B).put8(deflateMethod).put8(0);
  header.put32(static_cast<std::uint64_t>(seconds)).put8(0).put8(unknownSystem);
  return header.bytes();
}

Bytes gzipTrailer(std::uint32_t crc, std::uint64_t size) {
  return ByteWriter().put32(crc).put32(size).bytes();
}

Bytes gzipCompress(std::span<const std::byte> bytes, std::chrono::sys_seconds modified) {
  Bytes stream = gzipHeader(modified);
  platform::append(
      stream,
      platform::rawDeflateTransform(bytes, platform::noOutputLimit, platform::DeflateDirection::compress).value());
  platform::append(stream, gzipTrailer(platform::crc32Of(bytes), bytes.size()));
  return stream;
}

std::optional<std::span<const std::byte>> gzipPayload(std::span<const std::byte> bytes) {
  if (bytes.size() < headerSize + trailerSize) return std::nullopt;
  ByteReader reader(bytes.first(bytes.size() - trailerSize));
  if (reader.read16() != 0x8B1F || reader.readByte() != deflateMethod) return std::nullopt;
  const std::uint8_t flags = reader.readByte();
  reader.skip(6);
  try {
    skipOptionalFields(reader, flags);
  } catch (const ByteReader::OutOfBounds&) {
    return std::nullopt;
  }
  return reader.read(reader.left());
}

std::optional<Bytes> gzipDecompress(std::span<const std::byte> bytes, std::uint64_t outputLimit) {
  const auto payload = gzipPayload(bytes);
  if (!payload) return std::nullopt;
  return platform::rawDeflateTransform(*payload, outputLimit, platform::DeflateDirection::expand);
}

}  // namespace quirn
