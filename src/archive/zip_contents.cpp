// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/zip_contents.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdint>
#include <limits>

#include "archive/byte_reader.h"
#include "archive/zip_reader.h"
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

[[noreturn]] void throwInflateFailed(const ZipFileEntry& entry) {
  throwCorrupt("inflate failed or oversized: ", entry);
}

[[noreturn]] void throwUnsupported(const ZipFileEntry& entry) {
  throwCorrupt(fmt::format("unsupported method {}: ", entry.realMethod), entry);
}

ZipContents unpacked(const ZipFileEntry& entry, ZipContents data) {
  switch (entry.realMethod) {
    case zipStored: return data;
    case zipDeflated: {
      auto plain =
          platform::rawDeflateTransform(data.bytes(), outputLimitOf(entry), platform::DeflateDirection::expand);
      if (!plain) throwInflateFailed(entry);
      return ZipContents(std::move(*plain));
    }
    default: throwUnsupported(entry);
  }
}

std::span<const std::byte> ciphertextOf(std::span<const std::byte> payload, const std::optional<ZipAesKeys>& keys) {
  const auto ciphertext = keys ? authenticated(payload, *keys) : std::nullopt;
  if (!ciphertext) throw ZipError(ZipError::Kind::wrongPassword);
  return *ciphertext;
}

ZipContents deciphered(std::span<const std::byte> payload, const std::optional<ZipAesKeys>& keys) {
  const auto ciphertext = ciphertextOf(payload, keys);
  Bytes plain(ciphertext.begin(), ciphertext.end());
  ZipCipher(*keys).apply(plain);
  return ZipContents(std::move(plain));
}

constexpr std::size_t windowSize = 256 << 10;

void streamPieces(std::span<const std::byte> bytes, const ByteSink& sink) {
  for (; !bytes.empty(); bytes = bytes.subspan(std::min(windowSize, bytes.size())))
    sink(bytes.first(std::min(windowSize, bytes.size())));
}

void streamDeciphered(std::span<const std::byte> ciphertext, const ZipAesKeys& keys, const ByteSink& sink) {
  ZipCipher cipher(keys);
  Bytes window;
  streamPieces(ciphertext, [&](std::span<const std::byte> piece) {
    window.assign(piece.begin(), piece.end());
    cipher.apply(window);
    sink(window);
  });
}

// Expands what it is given and hands it on.
class Inflating {
 public:
  Inflating(const ZipFileEntry& entry, const ByteSink& sink) : entry_(entry), sink_(sink) {}

  void take(std::span<const std::byte> input) {
    using Status = platform::InflateStream::Status;
    while (!isEnded_) {
      std::span<std::byte> room(window_);
      const Status status = stream_.advance(input, room);
      const auto made = std::span<const std::byte>(window_).first(window_.size() - room.size());
      size_ += made.size();
      if (status == Status::damaged || size_ > outputLimitOf(entry_)) throwInflateFailed(entry_);
      sink_(made);
      isEnded_ = status == Status::ended;
      if (input.empty() && !room.empty()) return;
    }
  }

  void finish() const {
    if (!isEnded_) throwInflateFailed(entry_);
  }

 private:
  const ZipFileEntry& entry_;
  const ByteSink& sink_;
  platform::InflateStream stream_;
  Bytes window_ = Bytes(windowSize);
  std::uint64_t size_ = 0;
  bool isEnded_ = false;
};

// `stored` hands what is stored to the sink that it is given.
void streamUnpacked(const ZipFileEntry& entry, const std::function<void(const ByteSink&)>& stored,
                    const ByteSink& sink) {
  if (entry.realMethod == zipStored) {
    stored(sink);
    return;
  }
  if (entry.realMethod != zipDeflated) throwUnsupported(entry);
  Inflating inflating(entry, sink);
  stored([&](std::span<const std::byte> bytes) { inflating.take(bytes); });
  inflating.finish();
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

void streamZipContents(const ZipFileEntry& entry, const std::optional<ZipAesKeys>& keys,
                       std::span<const std::byte> payload, const ByteSink& sink) {
  if (entry.isEncrypted) {
    const auto ciphertext = ciphertextOf(payload, keys);
    streamUnpacked(entry, [&](const ByteSink& next) { streamDeciphered(ciphertext, *keys, next); }, sink);
    return;
  }
  std::uint32_t crc = platform::crc32Start;
  streamUnpacked(
      entry, [&](const ByteSink& next) { streamPieces(payload, next); },
      [&](std::span<const std::byte> bytes) {
        platform::crc32Update(crc, bytes);
        sink(bytes);
      });
  if (~crc != entry.crc32) throwCorrupt("CRC mismatch: ", entry);
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
