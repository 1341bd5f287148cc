// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <isa-l/igzip_lib.h>

#include <algorithm>
#include <limits>

#include "platform/compression.h"

namespace quirn::platform {
namespace {

std::uint32_t taken(std::size_t size) {
  return static_cast<std::uint32_t>(std::min<std::size_t>(size, std::numeric_limits<std::int32_t>::max()));
}

}  // namespace

struct InflateStream::State {
  inflate_state library;
};

void InflateStream::Freeing::operator()(State* state) const {
  std::default_delete<State>()(state);
}

InflateStream::InflateStream() : state_(std::make_unique<State>().release()) {
  isal_inflate_init(&state_->library);
  state_->library.crc_flag = ISAL_DEFLATE;
}

InflateStream::Status InflateStream::advance(std::span<const std::byte>& input, std::span<std::byte>& output) {
  inflate_state& library = state_->library;
  while (library.block_state != ISAL_BLOCK_FINISH) {
    const std::uint32_t inputSize = taken(input.size());
    const std::uint32_t outputSize = taken(output.size());
    // The library doesn't write to its input.
    library.next_in = const_cast<std::uint8_t*>(reinterpret_cast<const std::uint8_t*>(input.data()));
    library.avail_in = inputSize;
    library.next_out = reinterpret_cast<std::uint8_t*>(output.data());
    library.avail_out = outputSize;
    if (isal_inflate(&library) != ISAL_DECOMP_OK) return Status::damaged;
    const std::size_t usedInput = inputSize - library.avail_in;
    const std::size_t usedOutput = outputSize - library.avail_out;
    input = input.subspan(usedInput);
    output = output.subspan(usedOutput);
    if (library.block_state != ISAL_BLOCK_FINISH && usedInput == 0 && usedOutput == 0) return Status::unfinished;
  }
  return Status::ended;
}

}  // namespace quirn::platform
