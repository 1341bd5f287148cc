// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/quick_deflate.h"

#include <isa-l/igzip_lib.h>

namespace quirn::platform {

bool shrinksQuickly(std::span<const std::byte> bytes) {
  Bytes output(bytes.size());
  Bytes levelBuffer(ISAL_DEF_LVL1_DEFAULT);
  isal_zstream stream{};
  isal_deflate_stateless_init(&stream);
  stream.level = 1;
  stream.level_buf = reinterpret_cast<std::uint8_t*>(levelBuffer.data());
  stream.level_buf_size = static_cast<std::uint32_t>(levelBuffer.size());
  // The library doesn't write to its input.
  stream.next_in = const_cast<std::uint8_t*>(reinterpret_cast<const std::uint8_t*>(bytes.data()));
  stream.avail_in = static_cast<std::uint32_t>(bytes.size());
  stream.next_out = reinterpret_cast<std::uint8_t*>(output.data());
  stream.avail_out = static_cast<std::uint32_t>(output.size());
  stream.end_of_stream = 1;
  stream.flush = NO_FLUSH;
  // What doesn't fit into as much room as it takes now hasn't shrunk.
  return isal_deflate_stateless(&stream) == COMP_OK && stream.total_out < bytes.size();
}

}  // namespace quirn::platform
