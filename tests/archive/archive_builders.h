// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Archives built byte by byte, also such as no honest program writes.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/bytes.h"

namespace quirn::tests {

// Two, four or eight bytes, the lowest first.
std::string le16(std::uint64_t number);
std::string le32(std::uint64_t number);
std::string le64(std::uint64_t number);

// `count` times the same byte.
std::string run(std::size_t count, char byte);

// Bytes that can't be compressed.
std::string noise(std::size_t size);

std::uint32_t crcOf(std::string_view text);
std::string deflatedText(std::string_view text);

// An entry as it is told of. What is left out follows from `data`.
struct ZipPart {
  std::string name = "a.txt";
  std::string data = "abc";  // as it is stored
  std::uint16_t method = 0;
  std::optional<std::uint32_t> crc;
  std::optional<std::uint32_t> compressedSize;
  std::optional<std::uint32_t> uncompressedSize;
  std::optional<std::uint32_t> offset;
  std::uint16_t mode = 0100644;
  std::uint16_t date = 0x5A21;  // 2025-01-01
  std::uint16_t time = 0;
  std::string extra;  // of the directory
  std::string comment;
  std::uint32_t localSignature = 0x04034B50;
};

// What the end record claims, where it isn't the truth.
struct ZipClaims {
  std::optional<std::uint16_t> count;
  std::optional<std::uint32_t> directoryOffset;
  std::string beforeEnd;  // between the directory and the end record
  std::string comment;
};

std::string zipOf(const std::vector<ZipPart>& parts, const ZipClaims& claims = {});

struct TarPart {
  std::string name = "a.txt";
  std::string data = "abc";
  char type = '0';
  std::string linkName;
  std::optional<std::string> size;  // the field, where it isn't the size of the data in octal
  std::string prefix;
};

// The entries without the blocks that end an archive.
std::string tarOf(const std::vector<TarPart>& parts);

}  // namespace quirn::tests
