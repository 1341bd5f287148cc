// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Universally unique identifiers, version 4 (RFC 9562, section 5.4), from the system's random
// source.

#pragma once

#include <array>
#include <compare>
#include <cstddef>
#include <string>

namespace quirn::platform {

class Uuid {
 public:
  // A new identifier that no other call has given.
  static Uuid random();

  // The usual form: 36 characters, lower case, with hyphens.
  std::string text() const;

  auto operator<=>(const Uuid&) const = default;

 private:
  std::array<std::byte, 16> bytes_{};
};

}  // namespace quirn::platform
