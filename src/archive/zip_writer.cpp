// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/zip_writer.h"

#include <fmt/format.h>

#include <limits>

#include "archive/dos_time.h"
#include "archive/zip_aes.h"
#include "archive/zip_entry.h"
#include "platform/compression.h"

namespace quirn {
namespace {

using platform::Bytes;

constexpr std::uint64_t mostWithoutZip64 = 0xFFFFFFFE;
constexpr std::uint64_t mostEntriesWithoutZip64 = 0xFFFE;
constexpr std::uint32_t elsewhere = 0xFFFFFFFF;
constexpr std::uint16_t versionWithZip64 = 45;

ByteSink created(const std::filesystem::path& path) {
  ByteSink sink = sinkIntoFile(path);
  if (!sink) throw ZipError(ZipError::Kind::corrupt, fmt::format("couldn't create {}", path.filename().string()));
  return sink;
}

std::uint16_t versionNeeded(const ZipHeader& entry, bool isZip64) {
  constexpr std::uint16_t version = 20;
  constexpr std::uint16_t versionWithAes = 51;
  return entry.aesRealMethod ? versionWithAes : isZip64 ? versionWithZip64 : version;
}

void putAesRecord(ByteWriter& extra, const ZipHeader& entry) {
  constexpr std::uint16_t ae2 = 2;
  constexpr std::uint8_t strengthOf256Bits = 3;
  if (!entry.aesRealMethod) return;
  extra.put16(0x9901).put16(7).put16(ae2).put("AE").put8(strengthOf256Bits).put16(*entry.aesRealMethod);
}

}  // namespace

ZipPacked zipPacked(std::span<const std::byte> data) {
  ZipPacked packed{.crc = platform::crc32Of(data)};
  if (data.empty()) return packed;
  auto deflated = platform::rawDeflateTransform(data, platform::noOutputLimit, platform::DeflateDirection::compress);
  if (!deflated || deflated->size() >= data.size()) return packed;
  packed.method = zipDeflated;
  packed.deflated = std::move(*deflated);
  return packed;
}

// What both headers of an entry say.
struct ZipWriter::Fields {
  const ZipHeader& entry;
  DosTime modified;
  std::uint64_t offset;
  bool isZip64;

  void putCommon(ByteWriter& bytes) const {
    constexpr std::uint16_t utf8Name = 0x0800;
    constexpr std::uint16_t encrypted = 0x0001;
    bytes.put16(versionNeeded(entry, isZip64))
        .put16(utf8Name | (entry.aesRealMethod ? encrypted : 0))
        .put16(entry.aesRealMethod ? zipAes : entry.method)
        .put16(modified.time)
        .put16(modified.date)
        .put32(entry.aesRealMethod ? 0 : entry.crc)
        .put32(isZip64 ? elsewhere : entry.payloadSize)
        .put32(isZip64 ? elsewhere : entry.uncompressedSize)
        .put16(entry.name.size());
  }
};

ZipWriter::ZipWriter(const std::filesystem::path& path) : ZipWriter(created(path)) {}

ZipWriter::ZipWriter(ByteSink sink) : sink_(std::move(sink)) {}

void ZipWriter::write(std::span<const std::byte> bytes) {
  sink_.write(bytes);
  offset_ += bytes.size();
}

void ZipWriter::add(std::string_view name, std::span<const std::byte> data, std::optional<std::string_view> password,
                    std::chrono::sys_seconds modified, std::uint16_t mode) {
  const ZipPacked packed = zipPacked(data);
  const auto payload = packed.payload(data);
  if (password.value_or("").empty()) {
    addPrepared(name, payload, data.size(), packed.crc, packed.method, {}, modified, mode, false);
    return;
  }
  const ZipSalt salt = randomZipSalt();
  const Bytes enciphered = encrypted(payload, salt, zipAesKeys(*password, std::span(&salt, 1)).front());
  addPrepared(name, enciphered, data.size(), 0, zipAes, packed.method, modified, mode, false);
}

void ZipWriter::addPrepared(std::string_view name, std::span<const std::byte> payload, std::uint64_t uncompressedSize,
                            std::uint32_t crc, std::uint16_t method, std::optional<std::uint16_t> aesRealMethod,
                            std::chrono::sys_seconds modified, std::uint16_t mode, bool isDirectory) {
  begin({std::string(name), payload.size(), uncompressedSize, crc, method, aesRealMethod, modified, mode, isDirectory});
  append(payload);
}

void ZipWriter::begin(const ZipHeader& entry) {
  if (entry.name.size() > std::numeric_limits<std::uint16_t>::max())
    throw ZipError(ZipError::Kind::corrupt, "a name is longer than a ZIP archive can hold");
  const bool isZip64 =
      entry.payloadSize > mostWithoutZip64 || entry.uncompressedSize > mostWithoutZip64 || offset_ > mostWithoutZip64;
  needsZip64_ = needsZip64_ || isZip64;
  const Fields fields{entry, dosTimeOf(entry.modified, zone_), offset_, isZip64};
  collectDirectoryRecord(fields);
  writeLocalHeader(fields);
  ++count_;
}

void ZipWriter::append(std::span<const std::byte> payload) {
  write(payload);
}

void ZipWriter::writeLocalHeader(const Fields& fields) {
  const ZipHeader& entry = fields.entry;
  ByteWriter extra;
  if (fields.isZip64) extra.put16(0x0001).put16(16).put64(entry.uncompressedSize).put64(entry.payloadSize);
  putAesRecord(extra, entry);
  ByteWriter header;
  header.put32(0x04034B50);
  fields.putCommon(header);
  header.put16(extra.bytes().size()).put(entry.name).put(extra.bytes());
  write(header.bytes());
}

void ZipWriter::collectDirectoryRecord(const Fields& fields) {
  constexpr std::uint16_t madeByUnix = 3 << 8;
  constexpr std::uint32_t dosDirectory = 0x10;
  const ZipHeader& entry = fields.entry;
  ByteWriter extra;
  if (fields.isZip64) {
    extra.put16(0x0001).put16(24).put64(entry.uncompressedSize).put64(entry.payloadSize).put64(fields.offset);
  }
  putAesRecord(extra, entry);
  central_.put32(0x02014B50).put16(madeByUnix | versionNeeded(entry, fields.isZip64));
  fields.putCommon(central_);
  central_.put16(extra.bytes().size())
      .put16(0)  // comment
      .put16(0)  // disk
      .put16(0)  // internal attributes
      .put32(std::uint32_t{entry.mode} << 16 | (entry.isDirectory ? dosDirectory : 0))
      .put32(fields.isZip64 ? elsewhere : fields.offset)
      .put(entry.name)
      .put(extra.bytes());
}

void ZipWriter::finish() {
  const std::uint64_t directoryOffset = offset_;
  const std::uint64_t directorySize = central_.bytes().size();
  write(central_.bytes());
  const bool isZip64 = needsZip64_ || count_ > mostEntriesWithoutZip64 || directorySize > mostWithoutZip64 ||
                       directoryOffset > mostWithoutZip64;
  if (isZip64) writeZip64End(directorySize, directoryOffset);
  ByteWriter end;
  end.put32(0x06054B50).put16(0).put16(0);
  for (int i = 0; i < 2; ++i) end.put16(isZip64 ? 0xFFFF : count_);
  end.put32(isZip64 ? elsewhere : directorySize).put32(isZip64 ? elsewhere : directoryOffset).put16(0);
  write(end.bytes());
  sink_.close();
}

void ZipWriter::writeZip64End(std::uint64_t directorySize, std::uint64_t directoryOffset) {
  const std::uint64_t endOffset = offset_;
  ByteWriter end;
  end.put32(0x06064B50).put64(44).put16(versionWithZip64).put16(versionWithZip64).put32(0).put32(0);
  end.put64(count_).put64(count_).put64(directorySize).put64(directoryOffset);
  end.put32(0x07064B50).put32(0).put64(endOffset).put32(1);
  write(end.bytes());
}

}  // namespace quirn
