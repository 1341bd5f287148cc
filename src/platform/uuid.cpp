// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/uuid.h"

#include <fmt/format.h>

#include <span>

#include "platform/random.h"

namespace quirn::platform {

Uuid Uuid::random() {
  Uuid uuid;
  fillRandom(uuid.bytes_);
  uuid.mark(std::byte{0x40});
  return uuid;
}

Uuid Uuid::ordered(std::int64_t milliseconds) {
  Uuid uuid;
  fillRandom(std::span(uuid.bytes_).subspan(6));
  for (std::size_t i = 0; i < 6; ++i) uuid.bytes_[i] = static_cast<std::byte>(milliseconds >> (40 - 8 * i));
  uuid.mark(std::byte{0x70});
  return uuid;
}

void Uuid::mark(std::byte version) {
  bytes_[6] = (bytes_[6] & std::byte{0x0F}) | version;
  bytes_[8] = (bytes_[8] & std::byte{0x3F}) | std::byte{0x80};
}

std::string Uuid::text() const {
  std::string text;
  text.reserve(36);
  for (std::size_t i = 0; i < bytes_.size(); ++i) {
    if (i == 4 || i == 6 || i == 8 || i == 10) text += '-';
    fmt::format_to(std::back_inserter(text), "{:02x}", std::to_integer<unsigned>(bytes_[i]));
  }
  return text;
}

}  // namespace quirn::platform
