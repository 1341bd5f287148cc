// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>

#include <algorithm>
#include <bit>

#include "archive/tar.h"
#include "platform/text.h"

namespace quirn {
namespace {

using platform::bytesOf;

struct Field {
  std::size_t offset;
  std::size_t length;
};

constexpr Field nameField{0, 100};
constexpr Field modeField{100, 8};
constexpr Field uidField{108, 8};
constexpr Field gidField{116, 8};
constexpr Field sizeField{124, 12};
constexpr Field mtimeField{136, 12};
constexpr Field checksumField{148, 8};
constexpr Field typeField{156, 1};
constexpr Field magicField{257, 8};
constexpr Field prefixField{345, 155};

void putText(TarBlock& block, Field field, std::string_view text) {
  std::ranges::copy(bytesOf(text.substr(0, field.length)), block.begin() + static_cast<std::ptrdiff_t>(field.offset));
}

void putName(TarBlock& block, Field field, std::string_view name) {
  putText(block, field, platform::utf8Prefix(name, field.length));
}

// Digits and a NUL, or GNU's base 256 where the digits don't do.
void putNumber(TarBlock& block, Field field, std::uint64_t number) {
  const std::string digits = fmt::format("{:0{}o}", number, field.length - 1);
  if (digits.size() < field.length) {
    putText(block, field, digits);
    return;
  }
  block[field.offset] = std::byte{0x80};
  for (std::size_t i = 0; i < sizeof number; ++i)
    block[field.offset + field.length - 1 - i] = static_cast<std::byte>(number >> (8 * i) & 0xFF);
}

void putChecksum(TarBlock& block) {
  putText(block, checksumField, "        ");
  unsigned sum = 0;
  for (const std::byte byte : block) sum += std::to_integer<unsigned>(byte);
  putText(block, checksumField, fmt::format("{:06o}{} ", sum, '\0'));
}

// Where the last hundred characters begin.
std::size_t splitOf(std::string_view name) {
  std::vector<std::size_t> begins;
  for (std::size_t at = 0; at < name.size(); at += platform::firstScalar(name.substr(at)).length) begins.push_back(at);
  return begins.size() <= nameField.length ? 0 : begins[begins.size() - nameField.length];
}

ByteSink created(const std::filesystem::path& path) {
  ByteSink sink = sinkIntoFile(path);
  if (!sink) throw TarError(fmt::format("couldn't create {}", path.filename().string()));
  return sink;
}

}  // namespace

TarBlock tarHeader(std::string_view name, std::uint64_t size, std::chrono::sys_seconds mtime, std::uint16_t mode,
                   std::uint8_t typeflag) {
  const std::size_t split = name.size() <= nameField.length ? 0 : splitOf(name);
  const std::int64_t seconds = std::max<std::int64_t>(0, mtime.time_since_epoch().count());
  TarBlock block{};
  putName(block, nameField, name.substr(split));
  putNumber(block, modeField, mode);
  putNumber(block, uidField, 0);
  putNumber(block, gidField, 0);
  putNumber(block, sizeField, size);
  putNumber(block, mtimeField, static_cast<std::uint64_t>(seconds));
  block[typeField.offset] = std::byte{typeflag};
  putText(block, magicField,
          std::string_view("ustar\0"
                           "00",
                           magicField.length));
  putName(block, prefixField, name.substr(0, split));
  putChecksum(block);
  return block;
}

TarWriter::TarWriter(const std::filesystem::path& path) : TarWriter(created(path)) {}

TarWriter::TarWriter(ByteSink sink) : sink_(std::move(sink)) {}

void TarWriter::add(std::string_view name, std::span<const std::byte> data, std::chrono::sys_seconds modified,
                    std::uint16_t mode) {
  begin(name, data.size(), modified, mode);
  append(data);
  end();
}

void TarWriter::begin(std::string_view name, std::uint64_t size, std::chrono::sys_seconds modified,
                      std::uint16_t mode) {
  written_ = 0;
  sink_.write(tarHeader(name, size, modified, mode, tarFile));
}

void TarWriter::append(std::span<const std::byte> data) {
  written_ += data.size();
  sink_.write(data);
}

void TarWriter::end() {
  constexpr TarBlock zeros{};
  sink_.write(std::span(zeros).first((tarBlockSize - written_ % tarBlockSize) % tarBlockSize));
}

void TarWriter::finish() {
  constexpr TarBlock zeros{};
  sink_.write(zeros);
  sink_.write(zeros);
  sink_.close();
}

}  // namespace quirn
