// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Punycode: a label of Unicode characters written in those of host names (RFC 3492).

#pragma once

#include <exception>
#include <string>
#include <string_view>

namespace quirn {

class PunycodeError final : public std::exception {
 public:
  enum class Fault {
    overflow,        // a number beyond 32 bits, or a label of thousands of characters
    basicCodePoint,  // what stands for itself is not ASCII
    digit,           // something that is none, or the end where one is due
    codePoint,       // the number of no character
  };

  explicit PunycodeError(Fault fault) : fault_(fault) {}
  Fault fault() const { return fault_; }
  const char* what() const noexcept override { return "Punycode"; }

 private:
  Fault fault_;
};

// Both without the "xn--". Text is UTF-8. Both throw PunycodeError.
std::string punycodeEncoded(std::string_view label);
std::string punycodeDecoded(std::string_view label);

}  // namespace quirn
