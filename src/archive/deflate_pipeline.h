// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Compresses a long stream on all processors: cut into pieces that are compressed side by side and joined to one
// DEFLATE stream. The same bytes give the same stream, however they come and however many processors there are.

#pragma once

#include <cstdint>
#include <span>

#include "archive/byte_sink.h"
#include "platform/bytes.h"
#include "platform/compression.h"
#include "platform/ordered_tasks.h"

namespace quirn {

class DeflatePipeline {
 public:
  explicit DeflatePipeline(ByteSink sink) : sink_(std::move(sink)) {}

  // Throws what the sink throws, as finish() does.
  void write(std::span<const std::byte> bytes);
  // Ends the stream. The last call.
  void finish();

  // Of what was written.
  std::uint32_t crc() const { return ~crcState_; }
  std::uint64_t size() const { return size_; }

 private:
  void beginPiece(platform::DeflatePiece piece);
  void takePiece() { sink_(pieces_.next()); }

  ByteSink sink_;
  platform::Bytes gathered_;
  platform::OrderedTasks<platform::Bytes> pieces_;
  std::uint32_t crcState_ = platform::crc32Start;
  std::uint64_t size_ = 0;
};

}  // namespace quirn
