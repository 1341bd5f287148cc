// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Raw DEFLATE (RFC 1951), without the frame of zlib or gzip, and CRC-32.

#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>

#include "platform/bytes.h"

namespace quirn::platform {

inline constexpr std::uint32_t crc32Start = 0xFFFFFFFF;

// The CRC-32 of ISO 3309 (reflected polynomial 0xEDB88320), taken further over `bytes`. A state begins as crc32Start;
// the checksum of all that was given is its complement.
void crc32Update(std::uint32_t& state, std::span<const std::byte> bytes);

// The checksum of one piece.
std::uint32_t crc32Of(std::span<const std::byte> bytes);

enum class DeflateDirection { compress, expand };

inline constexpr std::uint64_t noOutputLimit = std::numeric_limits<std::uint64_t>::max();

// All of `bytes` compressed or expanded. Nothing if the input is damaged, ends before its stream does, or gives more
// than `outputLimit` bytes. What stands behind the end of a stream is ignored. Memory grows with what really comes out.
std::optional<Bytes> rawDeflateTransform(std::span<const std::byte> bytes, std::uint64_t outputLimit,
                                         DeflateDirection direction);

// A long input is compressed in pieces, which may be made at the same time: their outputs one behind another are one
// stream, if the last one alone was made as `last`. Pieces of this size cost about half a percent of the result.
inline constexpr std::size_t deflatePieceSize = 4 << 20;
enum class DeflatePiece { continued, last };
Bytes deflatedPiece(std::span<const std::byte> bytes, DeflatePiece piece);

// Expands a stream bit by bit, in the memory of its window.
class InflateStream {
 public:
  enum class Status { unfinished, ended, damaged };

  InflateStream();

  // Goes on until the input or the room for output is used up; both are cut by what was used of them.
  Status advance(std::span<const std::byte>& input, std::span<std::byte>& output);

 private:
  struct State;
  struct Freeing {
    void operator()(State* state) const;
  };
  std::unique_ptr<State, Freeing> state_;
};

}  // namespace quirn::platform
