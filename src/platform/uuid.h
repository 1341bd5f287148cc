// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Universally unique identifiers, versions 4 and 7 (RFC 9562, sections 5.4 and 5.7), from the
// system's random source.

#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <cstdint>
#include <string>

namespace quirn::platform {

class Uuid {
 public:
  // A new identifier that no other call has given.
  static Uuid random();

  // One that sorts by its time, in milliseconds since 1970; random within a millisecond.
  static Uuid ordered(std::int64_t milliseconds);

  // The usual form: 36 characters, lower case, with hyphens.
  std::string text() const;

  auto operator<=>(const Uuid&) const = default;

 private:
  void mark(std::byte version);

  std::array<std::byte, 16> bytes_{};
};

}  // namespace quirn::platform
