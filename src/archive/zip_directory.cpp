// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The central directory of a ZIP archive.

#include <algorithm>
#include <cstdint>
#include <optional>

#include "archive/byte_reader.h"
#include "archive/dos_time.h"
#include "archive/zip_reader.h"
#include "platform/text.h"

namespace quirn {
namespace {

using Span = std::span<const std::byte>;

constexpr std::uint32_t endSignature = 0x06054B50;
constexpr std::uint32_t zip64LocatorSignature = 0x07064B50;
constexpr std::uint32_t zip64EndSignature = 0x06064B50;
constexpr std::uint32_t entrySignature = 0x02014B50;
constexpr std::uint16_t zip64Tag = 0x0001;
constexpr std::uint16_t aesTag = 0x9901;
constexpr std::uint32_t elsewhere = 0xFFFFFFFF;  // the number stands in a ZIP64 record

[[noreturn]] void throwCorrupt(const char* text) {
  throw ZipError(ZipError::Kind::corrupt, text);
}

std::size_t findEnd(Span bytes) {
  constexpr std::size_t endSize = 22;
  constexpr std::size_t longestComment = 65535;
  if (bytes.size() < endSize) throw ZipError(ZipError::Kind::notAZip);
  const std::size_t last = bytes.size() - endSize;
  const std::size_t first = last - std::min(last, longestComment);
  for (std::size_t at = last + 1; at-- > first;) {
    if (bytes[at] != std::byte{'P'} || ByteReader(bytes, at).read32() != endSignature) continue;
    if (at + endSize + ByteReader(bytes, at + endSize - 2).read16() == bytes.size()) return at;
  }
  throw ZipError(ZipError::Kind::notAZip);
}

struct DirectoryPlace {
  std::uint64_t count = 0;
  std::uint64_t offset = 0;
};

DirectoryPlace zip64Place(Span bytes, std::size_t end) {
  constexpr std::size_t locatorSize = 20;
  if (end < locatorSize || ByteReader(bytes, end - locatorSize).read32() != zip64LocatorSignature)
    throwCorrupt("no zip64 locator");
  const std::uint64_t record = ByteReader(bytes, end - locatorSize + 8).read64();
  ByteReader reader(bytes, record);
  if (reader.read32() != zip64EndSignature) throwCorrupt("no zip64 eocd");
  reader.skip(28);
  DirectoryPlace place;
  place.count = reader.read64();
  reader.skip(8);
  place.offset = reader.read64();
  return place;
}

DirectoryPlace placeOf(Span bytes) {
  const std::size_t end = findEnd(bytes);
  DirectoryPlace place{ByteReader(bytes, end + 10).read16(), ByteReader(bytes, end + 16).read32()};
  if (place.count == 0xFFFF || place.offset == elsewhere) {
    try {
      place = zip64Place(bytes, end);
    } catch (const ZipError&) {
      // These may be real numbers of an archive without ZIP64, and then they hold.
    } catch (const ByteReader::OutOfBounds&) {
      // The same.
    }
  }
  if (place.offset > bytes.size()) throwCorrupt("CD offset out of range");
  return place;
}

// The data of the first extra record of that tag; a record that would overrun the field ends the search.
std::optional<Span> extraRecord(Span extra, std::uint16_t tag) {
  constexpr std::size_t headerSize = 4;
  ByteReader reader(extra);
  while (reader.left() >= headerSize) {
    const std::uint16_t found = reader.read16();
    const std::uint16_t size = reader.read16();
    if (size > reader.left()) return std::nullopt;
    const Span data = reader.read(size);
    if (found == tag) return data;
  }
  return std::nullopt;
}

void applyZip64(ZipFileEntry& entry, Span extra) {
  const auto record = extraRecord(extra, zip64Tag);
  if (!record) return;
  ByteReader reader(*record);
  for (std::uint64_t* const number : {&entry.uncompressedSize, &entry.compressedSize, &entry.localHeaderOffset}) {
    if (*number == elsewhere && reader.left() >= sizeof *number) *number = reader.read64();
  }
}

void applyAes(ZipFileEntry& entry, Span extra) {
  constexpr std::size_t recordSize = 7;
  const auto record = extraRecord(extra, aesTag);
  if (!record || record->size() < recordSize) return;
  ByteReader reader(*record);
  reader.skip(4);
  entry.isEncrypted = true;
  entry.aesStrength = reader.readByte();
  entry.realMethod = reader.read16();
}

// Entries that were packed together share their times, and looking one up in a time zone takes a while.
class DosClock {
 public:
  std::chrono::sys_seconds at(DosTime time) {
    if (time != last_) {
      last_ = time;
      instant_ = instantOf(time, zone_);
    }
    return instant_;
  }

 private:
  platform::TimeZone zone_ = platform::TimeZone::current();
  DosTime last_;
  std::chrono::sys_seconds instant_ = instantOf(last_, zone_);
};

class DirectoryWalk {
 public:
  DirectoryWalk(Span bytes, std::uint64_t offset) : reader_(bytes, offset) {}

  // Nothing where the directory ends, or breaks off.
  std::optional<ZipFileEntry> next() {
    if (reader_.left() < sizeof entrySignature || reader_.read32() != entrySignature) return std::nullopt;
    ZipFileEntry entry;
    reader_.skip(6);  // versions, flags
    entry.method = entry.realMethod = reader_.read16();
    const std::uint16_t time = reader_.read16();
    entry.modified = clock_.at({.date = reader_.read16(), .time = time});
    entry.crc32 = reader_.read32();
    entry.compressedSize = reader_.read32();
    entry.uncompressedSize = reader_.read32();
    const std::uint16_t nameLength = reader_.read16();
    const std::uint16_t extraLength = reader_.read16();
    const std::uint16_t commentLength = reader_.read16();
    reader_.skip(4);  // disk number, internal attributes
    entry.unixMode = static_cast<std::uint16_t>(reader_.read32() >> 16);
    entry.localHeaderOffset = reader_.read32();
    entry.name = platform::repairedUtf8(platform::textOf(reader_.read(nameLength)));
    entry.isDirectory = entry.name.ends_with('/');
    const Span extra = reader_.read(extraLength);
    reader_.skip(commentLength);
    applyZip64(entry, extra);
    if (entry.method == zipAes) applyAes(entry, extra);
    return entry;
  }

 private:
  ByteReader reader_;
  DosClock clock_;
};

}  // namespace

std::vector<ZipFileEntry> listZipEntries(Span bytes) {
  const DirectoryPlace place = placeOf(bytes);
  std::vector<ZipFileEntry> entries;
  if (place.count == 0) return entries;
  DirectoryWalk walk(bytes, place.offset);
  while (entries.size() < place.count) {
    auto entry = walk.next();
    if (!entry) break;
    entries.push_back(std::move(*entry));
  }
  return entries;
}

}  // namespace quirn
