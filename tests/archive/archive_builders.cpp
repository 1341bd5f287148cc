// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/archive_builders.h"

#include <random>

#include "platform/compression.h"

namespace quirn::tests {
namespace {

std::string littleEndian(std::uint64_t number, int size) {
  std::string bytes;
  for (int i = 0; i < size; ++i) bytes += static_cast<char>(number >> (8 * i) & 0xFF);
  return bytes;
}

// Method, time, date, checksum and sizes, as both headers have them.
std::string commonFields(const ZipPart& part) {
  return le16(part.method) + le16(part.time) + le16(part.date) + le32(part.crc.value_or(crcOf(part.data))) +
         le32(part.compressedSize.value_or(part.data.size())) + le32(part.uncompressedSize.value_or(part.data.size())) +
         le16(part.name.size());
}

std::string padded(std::string text, std::size_t size) {
  text.resize(size, '\0');
  return text;
}

}  // namespace

std::string le16(std::uint64_t number) {
  return littleEndian(number, 2);
}

std::string le32(std::uint64_t number) {
  return littleEndian(number, 4);
}

std::string le64(std::uint64_t number) {
  return littleEndian(number, 8);
}

std::string run(std::size_t count, char byte) {
  std::string bytes;
  bytes.resize(count, byte);
  return bytes;
}

std::string noise(std::size_t size) {
  std::mt19937 random(1);
  std::string bytes = run(size, ' ');
  for (char& byte : bytes) byte = static_cast<char>(random());
  return bytes;
}

std::uint32_t crcOf(std::string_view text) {
  return platform::crc32Of(platform::bytesOf(text));
}

std::string deflatedText(std::string_view text) {
  return std::string(platform::textOf(platform::deflatedPiece(platform::bytesOf(text), platform::DeflatePiece::last)));
}

std::string zipOf(const std::vector<ZipPart>& parts, const ZipClaims& claims) {
  std::string file;
  std::string directory;
  for (const ZipPart& part : parts) {
    const std::uint32_t offset = part.offset.value_or(file.size());
    file += le32(part.localSignature) + le16(20) + le16(0x0800) + commonFields(part) + le16(0) + part.name + part.data;
    directory += le32(0x02014B50) + le16(0x0314) + le16(20) + le16(0x0800) + commonFields(part) +
                 le16(part.extra.size()) + le16(part.comment.size()) + le16(0) + le16(0) +
                 le32(std::uint64_t{part.mode} << 16) + le32(offset) + part.name + part.extra + part.comment;
  }
  const std::size_t directoryOffset = file.size();
  const std::uint16_t count = claims.count.value_or(static_cast<std::uint16_t>(parts.size()));
  return file + directory + claims.beforeEnd + le32(0x06054B50) + le16(0) + le16(0) + le16(count) + le16(count) +
         le32(directory.size()) + le32(claims.directoryOffset.value_or(directoryOffset)) + le16(claims.comment.size()) +
         claims.comment;
}

std::string tarOf(const std::vector<TarPart>& parts) {
  std::string file;
  for (const TarPart& part : parts) {
    std::string header = run(512, '\0');
    const auto put = [&header](std::size_t at, std::string_view text) { header.replace(at, text.size(), text); };
    put(0, part.name);
    put(100, "0000644");
    put(108, "0000000");
    put(116, "0000000");
    put(124, part.size.value_or(fmt::format("{:011o}", part.data.size())));
    put(136, "14713421000");
    put(156, {&part.type, 1});
    put(157, part.linkName);
    put(257, std::string_view("ustar\0"
                              "00",
                              8));
    put(345, part.prefix);
    file += header + padded(part.data, (part.data.size() + 511) / 512 * 512);
  }
  return file;
}

}  // namespace quirn::tests
