// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shell/image_format.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

namespace quirn {
namespace {

using Bytes = std::span<const std::byte>;

constexpr std::string_view pngSignature = "\x89PNG\r\n\x1A\n";

bool startsWith(Bytes bytes, std::string_view beginning) {
  return bytes.size() >= beginning.size() &&
         std::ranges::equal(bytes.first(beginning.size()), std::as_bytes(std::span(beginning)));
}

std::uint32_t bigEndian(Bytes four) {
  std::uint32_t value = 0;
  for (const std::byte byte : four.first(4)) value = value << 8 | std::to_integer<std::uint32_t>(byte);
  return value;
}

struct Chunk {
  std::string_view type;
  Bytes content;
};

// The next chunk, taken off `rest`; nothing if it is cut off.
std::optional<Chunk> takeChunk(Bytes& rest) {
  constexpr std::size_t frame = 12;  // length, type, checksum
  if (rest.size() < frame) return std::nullopt;
  const std::size_t length = bigEndian(rest);
  if (rest.size() - frame < length) return std::nullopt;
  const Chunk chunk{{reinterpret_cast<const char*>(rest.data()) + 4, 4}, rest.subspan(8, length)};
  rest = rest.subspan(frame + length);
  return chunk;
}

bool isHeader(const Chunk& chunk) {
  constexpr std::size_t headerLength = 13;
  return chunk.type == "IHDR" && chunk.content.size() == headerLength && bigEndian(chunk.content) > 0 &&
         bigEndian(chunk.content.subspan(4)) > 0;
}

}  // namespace

bool isWholePNG(Bytes bytes) {
  if (!startsWith(bytes, pngSignature)) return false;
  Bytes rest = bytes.subspan(pngSignature.size());
  auto chunk = takeChunk(rest);
  if (!chunk || !isHeader(*chunk)) return false;
  bool hasData = false;
  while ((chunk = takeChunk(rest))) {
    if (chunk->type == "IDAT") hasData = true;
    if (chunk->type == "IEND") return hasData;
  }
  return false;
}

bool isPDF(Bytes bytes) {
  return startsWith(bytes, "%PDF-");
}

}  // namespace quirn
