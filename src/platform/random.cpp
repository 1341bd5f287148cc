// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/random.h"

#include <sys/random.h>

#include <cerrno>

#include "platform/file_descriptor.h"

namespace quirn::platform {

void fillRandom(std::span<std::byte> bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::getrandom(bytes.data(), bytes.size(), 0);
    if (count < 0 && errno != EINTR) throwErrno("getrandom");
    if (count > 0) bytes = bytes.subspan(static_cast<std::size_t>(count));
  }
}

std::uint64_t randomBits() {
  std::uint64_t bits = 0;
  fillRandom(std::as_writable_bytes(std::span(&bits, 1)));
  return bits;
}

std::uint64_t drawBelow(std::uint64_t bound, const std::function<std::uint64_t()>& bits) {
  __extension__ using Wide = unsigned __int128;
  // Of the 2^64 products, the first 2^64 mod bound would make some numbers likelier.
  const std::uint64_t threshold = (0 - bound) % bound;
  for (;;) {
    const Wide product = static_cast<Wide>(bits()) * bound;
    if (static_cast<std::uint64_t>(product) >= threshold) return static_cast<std::uint64_t>(product >> 64);
  }
}

std::size_t randomBelow(std::size_t bound) {
  return drawBelow(bound, &randomBits);
}

std::string randomText(std::int64_t length, std::string_view alphabet) {
  std::string text;
  for (std::int64_t i = 0; i < length; ++i) text += alphabet[randomBelow(alphabet.size())];
  return text;
}

}  // namespace quirn::platform
