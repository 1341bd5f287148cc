// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/compression.h"

#include <libdeflate.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <new>

#include "platform/deflate_ending.h"
#include "platform/quick_deflate.h"

namespace quirn::platform {
namespace {

struct CompressorFreeing {
  void operator()(libdeflate_compressor* compressor) const { libdeflate_free_compressor(compressor); }
};
using Compressor = std::unique_ptr<libdeflate_compressor, CompressorFreeing>;

struct DecompressorFreeing {
  void operator()(libdeflate_decompressor* decompressor) const { libdeflate_free_decompressor(decompressor); }
};
using Decompressor = std::unique_ptr<libdeflate_decompressor, DecompressorFreeing>;

// One for each thread: making one costs more than compressing a small file.
template <int level>
libdeflate_compressor& compressorOfThread() {
  thread_local const Compressor compressor(libdeflate_alloc_compressor(level));
  if (!compressor) throw std::bad_alloc();
  return *compressor;
}

libdeflate_decompressor& decompressorOfThread() {
  thread_local const Decompressor decompressor(libdeflate_alloc_decompressor());
  if (!decompressor) throw std::bad_alloc();
  return *decompressor;
}

// Bits that a byte carries, by how often each value occurs.
double entropyOf(std::span<const std::byte> bytes) {
  std::array<unsigned, 256> counts{};
  for (const std::byte byte : bytes) ++counts[std::to_integer<std::size_t>(byte)];
  double bits = 0;
  for (const unsigned count : counts) {
    if (count > 0) bits -= count * std::log2(static_cast<double>(count) / static_cast<double>(bytes.size()));
  }
  return bits / static_cast<double>(bytes.size());
}

bool looksCompressed(std::span<const std::byte> bytes) {
  constexpr std::size_t sample = 16 << 10;
  constexpr double nearlyAllBits = 7.9;
  return bytes.size() >= 2 * sample && entropyOf(bytes.first(sample)) > nearlyAllBits &&
         entropyOf(bytes.subspan(bytes.size() / 2).first(sample)) > nearlyAllBits;
}

// Where a hasty search of all of it finds nothing, a thorough one would take ten times as long to find nothing.
Bytes deflated(std::span<const std::byte> bytes) {
  constexpr int storing = 0;
  constexpr int usual = 5;  // as small as what zlib makes at its level 6, give or take a percent
  libdeflate_compressor& compressor =
      looksCompressed(bytes) && !shrinksQuickly(bytes) ? compressorOfThread<storing>() : compressorOfThread<usual>();
  Bytes output(libdeflate_deflate_compress_bound(&compressor, bytes.size()));
  output.resize(libdeflate_deflate_compress(&compressor, bytes.data(), bytes.size(), output.data(), output.size()));
  return output;
}

std::optional<Bytes> deflatedWithin(std::span<const std::byte> bytes, std::uint64_t outputLimit) {
  Bytes output;
  while (bytes.size() > 2 * deflatePieceSize) {
    append(output, deflatedPiece(bytes.first(deflatePieceSize), DeflatePiece::continued));
    bytes = bytes.subspan(deflatePieceSize);
    if (output.size() > outputLimit) return std::nullopt;
  }
  if (output.empty()) {
    output = deflated(bytes);
  } else {
    append(output, deflatedPiece(bytes, DeflatePiece::last));
  }
  if (output.size() > outputLimit) return std::nullopt;
  return output;
}

// The size of what comes out, without keeping it.
std::optional<std::uint64_t> inflatedSize(std::span<const std::byte> bytes, std::uint64_t outputLimit) {
  InflateStream stream;
  Bytes window(256 << 10);
  std::uint64_t size = 0;
  for (;;) {
    std::span<std::byte> room(window);
    const auto status = stream.advance(bytes, room);
    size += window.size() - room.size();
    if (status == InflateStream::Status::damaged || size > outputLimit) return std::nullopt;
    if (status == InflateStream::Status::ended) return size;
    if (bytes.empty() && !room.empty()) return std::nullopt;
  }
}

// For an output too large to be given room on suspicion: expanding twice takes less than growing, which copies.
std::optional<Bytes> inflatedTwice(std::span<const std::byte> bytes, std::uint64_t outputLimit) {
  const auto size = inflatedSize(bytes, outputLimit);
  if (!size) return std::nullopt;
  Bytes output(static_cast<std::size_t>(*size));
  std::span<std::byte> room(output);
  if (InflateStream().advance(bytes, room) != InflateStream::Status::ended) return std::nullopt;
  return output;
}

std::optional<Bytes> inflatedWithin(std::span<const std::byte> bytes, std::uint64_t outputLimit) {
  // A stream gives at most 1032 bytes for each of its own.
  constexpr std::uint64_t highestRatio = 1032;
  constexpr std::uint64_t mostAtOnce = 64 << 20;
  const std::uint64_t ceiling = std::min<std::uint64_t>(bytes.size(), mostAtOnce) * highestRatio;
  const std::uint64_t room = std::min({outputLimit, ceiling, mostAtOnce});
  Bytes output(static_cast<std::size_t>(room));
  std::size_t used = 0;
  std::size_t made = 0;
  // A null pointer is no buffer for the library, even of no bytes.
  std::byte none{};
  switch (libdeflate_deflate_decompress_ex(&decompressorOfThread(), bytes.data(), bytes.size(),
                                           output.empty() ? &none : output.data(), output.size(), &used, &made)) {
    case LIBDEFLATE_SUCCESS: output.resize(made); return output;
    case LIBDEFLATE_INSUFFICIENT_SPACE:
      if (room == outputLimit) return std::nullopt;
      output = {};
      return inflatedTwice(bytes, outputLimit);
    default: return std::nullopt;
  }
}

}  // namespace

void crc32Update(std::uint32_t& state, std::span<const std::byte> bytes) {
  state = ~libdeflate_crc32(~state, bytes.data(), bytes.size());
}

std::uint32_t crc32Of(std::span<const std::byte> bytes) {
  std::uint32_t state = crc32Start;
  crc32Update(state, bytes);
  return ~state;
}

std::optional<Bytes> rawDeflateTransform(std::span<const std::byte> bytes, std::uint64_t outputLimit,
                                         DeflateDirection direction) {
  return direction == DeflateDirection::compress ? deflatedWithin(bytes, outputLimit)
                                                 : inflatedWithin(bytes, outputLimit);
}

Bytes deflatedPiece(std::span<const std::byte> bytes, DeflatePiece piece) {
  Bytes output = deflated(bytes);
  if (piece == DeflatePiece::continued) reopen(output);
  return output;
}

}  // namespace quirn::platform
