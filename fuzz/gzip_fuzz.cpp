// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <array>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <span>

#include "archive/gzip.h"
#include "platform/compression.h"

namespace {

using quirn::platform::Bytes;
using quirn::platform::InflateStream;

constexpr std::size_t limit = 1 << 22;

void require(bool condition) {
  if (!condition) std::abort();
}

// Through a window of a few hundred bytes.
std::optional<Bytes> streamed(std::span<const std::byte> input) {
  InflateStream stream;
  Bytes plain;
  std::array<std::byte, 300> window{};
  for (;;) {
    std::span<std::byte> room(window);
    const auto status = stream.advance(input, room);
    quirn::platform::append(plain, std::span(window).first(window.size() - room.size()));
    if (status == InflateStream::Status::damaged || plain.size() > limit) return std::nullopt;
    if (status == InflateStream::Status::ended) return plain;
    if (input.empty() && !room.empty()) return std::nullopt;
  }
}

}  // namespace

// The two ways to expand agree, and what is compressed comes back.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const auto bytes = std::as_bytes(std::span(data, size));
  const auto plain = quirn::gzipDecompress(bytes, limit);
  if (const auto payload = quirn::gzipPayload(bytes)) require(streamed(*payload) == plain);
  const Bytes original(bytes.begin(), bytes.end());
  require(quirn::gzipDecompress(quirn::gzipCompress(bytes, {}), size) == original);
  return 0;
}
