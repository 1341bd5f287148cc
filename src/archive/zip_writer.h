// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Writing ZIP archives (APPNOTE.TXT) from front to back: sizes and checksums are known before an entry is begun, so
// there are no data descriptors and nothing is ever gone back to. ZIP64 where it is needed, and WinZip's AES-256
// (AE-2).
//
//   ZipWriter writer(sinkInto(*output));
//   writer.add("notes/today.txt", bytes, {}, modified, 0644);
//   writer.finish();
//
// Used by one thread at a time.

#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "archive/byte_sink.h"
#include "archive/byte_writer.h"
#include "platform/bytes.h"
#include "platform/time_zone.h"

namespace quirn {

// How data is best stored: deflated, if that makes it smaller.
struct ZipPacked {
  std::uint16_t method = 0;  // 0 or 8
  std::uint32_t crc = 0;     // of the data
  platform::Bytes deflated;  // empty where it is stored
  std::span<const std::byte> payload(std::span<const std::byte> data) const { return method == 0 ? data : deflated; }
};

ZipPacked zipPacked(std::span<const std::byte> data);

// All that is written of an entry besides its payload.
struct ZipHeader {
  std::string name;  // with "/"; UTF-8, at most 65535 bytes
  std::uint64_t payloadSize = 0;
  std::uint64_t uncompressedSize = 0;
  std::uint32_t crc = 0;  // of the data; 0 with AES
  std::uint16_t method = 0;
  std::optional<std::uint16_t> aesRealMethod;  // the method of what is enciphered
  std::chrono::sys_seconds modified;
  std::uint16_t mode = 0;  // as in Unix
  bool isDirectory = false;
};

class ZipWriter {
 public:
  // A new file in the place of whatever stands at `path`. Throws ZipError "couldn't create {file}". The file stays when
  // something goes wrong later.
  explicit ZipWriter(const std::filesystem::path& path);
  explicit ZipWriter(ByteSink sink);

  // One whole entry. An empty password is none. Throws ZipError for a name that is too long, and what the sink throws,
  // as all that follow.
  void add(std::string_view name, std::span<const std::byte> data, std::optional<std::string_view> password,
           std::chrono::sys_seconds modified, std::uint16_t mode);

  // One whole entry that is compressed, or compressed and enciphered, already.
  void addPrepared(std::string_view name, std::span<const std::byte> payload, std::uint64_t uncompressedSize,
                   std::uint32_t crc, std::uint16_t method, std::optional<std::uint16_t> aesRealMethod,
                   std::chrono::sys_seconds modified, std::uint16_t mode, bool isDirectory);

  // The same in pieces: begin() and then all of the payload.
  void begin(const ZipHeader& entry);
  void append(std::span<const std::byte> payload);

  // Writes the directory. The last call.
  void finish();

 private:
  struct Fields;

  void write(std::span<const std::byte> bytes);
  void writeLocalHeader(const Fields& fields);
  void collectDirectoryRecord(const Fields& fields);
  void writeZip64End(std::uint64_t directorySize, std::uint64_t directoryOffset);

  BufferedSink sink_;
  platform::TimeZone zone_ = platform::TimeZone::current();
  std::uint64_t offset_ = 0;  // bytes written so far
  ByteWriter central_;
  std::uint64_t count_ = 0;
  bool needsZip64_ = false;
};

}  // namespace quirn
