// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/deflate_ending.h"

#define ZLIB_CONST
#include <zlib.h>

#include <array>
#include <new>
#include <stdexcept>

namespace quirn::platform {
namespace {

class BlockWalk {
 public:
  explicit BlockWalk(const Bytes& stream) {
    stream_.next_in = reinterpret_cast<const Bytef*>(stream.data());
    stream_.avail_in = static_cast<uInt>(stream.size());
    if (inflateInit2(&stream_, -MAX_WBITS) != Z_OK) throw std::bad_alloc();
  }
  ~BlockWalk() { inflateEnd(&stream_); }
  BlockWalk(const BlockWalk&) = delete;
  BlockWalk& operator=(const BlockWalk&) = delete;

  // Passes over a block. True if it was the last.
  bool passBlock() {
    constexpr int inLastBlock = 64;
    constexpr int betweenBlocks = 128;
    do {
      stream_.next_out = output_.data();
      stream_.avail_out = static_cast<uInt>(output_.size());
      if (inflate(&stream_, Z_BLOCK) != Z_OK) throw std::invalid_argument("no whole DEFLATE stream");
    } while ((stream_.data_type & betweenBlocks) == 0);
    return (stream_.data_type & inLastBlock) != 0;
  }

  // In bits from the beginning of the stream.
  std::size_t position() const {
    constexpr int unusedBits = 7;
    return stream_.total_in * 8 - static_cast<std::size_t>(stream_.data_type & unusedBits);
  }

 private:
  z_stream stream_{};
  std::array<Bytef, 64 << 10> output_;  // what comes out is of no interest
};

}  // namespace

void reopen(Bytes& stream) {
  BlockWalk walk(stream);
  std::size_t lastBlock = 0;
  while (!walk.passBlock()) lastBlock = walk.position();
  // BFINAL is the first bit of a block.
  stream[lastBlock / 8] &= ~(std::byte{1} << (lastBlock % 8));
  // The three bits of a stored block's header, all 0, lie in what is left of the last byte, or need one more.
  stream.resize((walk.position() + 7) / 8);
  if (walk.position() % 8 == 0 || walk.position() % 8 > 5) stream.push_back(std::byte{0});
  for (const unsigned byte : {0x00U, 0x00U, 0xFFU, 0xFFU}) stream.push_back(static_cast<std::byte>(byte));
}

}  // namespace quirn::platform
