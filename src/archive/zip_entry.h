// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a ZIP archive tells of one entry, and what can be wrong with an archive.

#pragma once

#include <chrono>
#include <cstdint>
#include <exception>
#include <string>

namespace quirn {

// As APPNOTE.TXT numbers them.
inline constexpr std::uint16_t zipStored = 0;
inline constexpr std::uint16_t zipDeflated = 8;
inline constexpr std::uint16_t zipAes = 99;

struct ZipFileEntry {
  std::string name;  // as stored, with "/"; what isn't UTF-8 in it is replaced by U+FFFD
  bool isDirectory = false;
  std::uint16_t method = zipStored;  // 99 for an AES entry without the record that AES needs
  std::uint32_t crc32 = 0;
  std::uint64_t compressedSize = 0;  // bytes, as the next two
  std::uint64_t uncompressedSize = 0;
  std::uint64_t localHeaderOffset = 0;
  std::uint16_t unixMode = 0;
  std::chrono::sys_seconds modified;  // the epoch where the archive names no day of the calendar
  bool isEncrypted = false;           // with AES; the older encryption is not told apart
  std::uint8_t aesStrength = 0;       // 0 without AES
  std::uint16_t realMethod = zipStored;
};

class ZipError final : public std::exception {
 public:
  enum class Kind { corrupt, unsafePath, notAZip, needsPassword, wrongPassword };

  // `text` says more of `corrupt` and `unsafePath`.
  explicit ZipError(Kind kind, std::string text = {}) : kind_(kind), text_(std::move(text)) {}

  Kind kind() const { return kind_; }
  const std::string& text() const { return text_; }
  const char* what() const noexcept override;

 private:
  Kind kind_;
  std::string text_;
};

}  // namespace quirn
