// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// TAR archives. Written is ustar (POSIX.1-1988), with the size in base 256, as GNU has it, where octal digits don't do.
// Read are these; the records with which pax and GNU give longer names are passed over, and what follows them keeps its
// short name.

#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <exception>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "archive/byte_sink.h"

namespace quirn {

inline constexpr std::size_t tarBlockSize = 512;
using TarBlock = std::array<std::byte, tarBlockSize>;

// The kinds of entries that are told apart.
inline constexpr std::uint8_t tarFile = '0';
inline constexpr std::uint8_t tarHardLink = '1';
inline constexpr std::uint8_t tarSymbolicLink = '2';
inline constexpr std::uint8_t tarFolder = '5';

class TarError final : public std::exception {
 public:
  enum class Kind { corrupt };

  explicit TarError(std::string text) : text_(std::move(text)) {}
  static Kind kind() { return Kind::corrupt; }
  const char* what() const noexcept override { return text_.c_str(); }

 private:
  std::string text_;
};

// A header. A name of more than 100 bytes is cut 100 characters before its end, what stands before going into the
// prefix, and both are cut short where they don't fit. A date before 1970 is written as 1970.
TarBlock tarHeader(std::string_view name, std::uint64_t size, std::chrono::sys_seconds mtime, std::uint16_t mode,
                   std::uint8_t typeflag);

// Used by one thread at a time.
class TarWriter {
 public:
  // A new file in the place of whatever stands at `path`. Throws TarError "couldn't create {file}".
  explicit TarWriter(const std::filesystem::path& path);
  explicit TarWriter(ByteSink sink);

  // A whole file. Throws what the sink throws, as all that follow.
  void add(std::string_view name, std::span<const std::byte> data, std::chrono::sys_seconds modified,
           std::uint16_t mode);

  // The same in pieces: begin(), then exactly `size` bytes, then end().
  void begin(std::string_view name, std::uint64_t size, std::chrono::sys_seconds modified, std::uint16_t mode);
  void append(std::span<const std::byte> data);
  void end();

  // The last call.
  void finish();

 private:
  BufferedSink sink_;
  std::uint64_t written_ = 0;  // of the entry that was begun
};

struct TarEntry {
  std::string name;  // the prefix, "/" and the name; what isn't UTF-8 in it is replaced by U+FFFD
  bool isDirectory = false;
  std::uint64_t size = 0;       // bytes, as the header has it
  std::int64_t dataOffset = 0;  // the place of the data in the archive
  std::uint16_t mode = 0;
  std::chrono::sys_seconds modified;
  std::uint8_t typeflag = 0;
  std::string linkName;
};

// The entries in order, up to the end or to where the archive is damaged. Checksums are not looked at.
std::vector<TarEntry> listTarEntries(std::span<const std::byte> bytes);

}  // namespace quirn
