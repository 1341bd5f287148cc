// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/gzip_reader.h"

#include "archive/gzip.h"
#include "platform/compression.h"

namespace quirn {

bool gunzip(const platform::MappedFile& file, const ByteSink& sink) {
  using Status = platform::InflateStream::Status;
  constexpr std::size_t windowSize = 256 << 10;
  constexpr std::size_t releasedAtOnce = 8 << 20;
  auto payload = gzipPayload(file.bytes());
  if (!payload) return false;
  platform::InflateStream stream;
  platform::Bytes window(windowSize);
  std::uint64_t size = 0;
  std::size_t released = 0;
  for (;;) {
    std::span<std::byte> room(window);
    const Status status = stream.advance(*payload, room);
    const auto made = std::span<const std::byte>(window).first(window.size() - room.size());
    size += made.size();
    if (status == Status::damaged || size > gzipOutputLimit) return false;
    sink(made);
    if (status == Status::ended) return true;
    if (payload->empty() && !room.empty()) return false;
    const std::size_t read = file.bytes().size() - payload->size();
    if (read - released < releasedAtOnce) continue;
    file.release(read);
    released = read;
  }
}

}  // namespace quirn
