// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Expanding gzip streams of any length, in little memory.

#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include "archive/byte_sink.h"
#include "platform/bytes.h"
#include "platform/compression.h"
#include "platform/mapped_file.h"

namespace quirn {

// What Quirn expands a stream to.
inline constexpr std::uint64_t gzipOutputLimit = 0x100000000;

// Gives what a mapped stream expands to. Reads the first member, and doesn't look at its trailer.
class GzipReader {
 public:
  // `file` outlives the reader.
  explicit GzipReader(const platform::MappedFile& file);

  // The next bytes, at most so many, which are kept until the next call; none at the end. Nothing for what is no gzip,
  // is damaged, or gives more than gzipOutputLimit.
  std::optional<std::span<const std::byte>> read(std::size_t most);

 private:
  // False for what makes read() give nothing.
  bool expandMore();
  void releaseRead();

  const platform::MappedFile& file_;
  std::optional<std::span<const std::byte>> payload_;
  platform::InflateStream stream_;
  platform::Bytes window_;
  std::span<const std::byte> unread_;
  std::uint64_t size_ = 0;
  std::size_t released_ = 0;
  bool hasEnded_ = false;
};

// Hands on all of it. False for what the reader refuses, when part of it may have been handed on. Throws what the sink
// throws.
bool gunzip(const platform::MappedFile& file, const ByteSink& sink);

}  // namespace quirn
