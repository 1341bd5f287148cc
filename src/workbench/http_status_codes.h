// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The status codes of HTTP that are in use: those that IANA registers, and the teapot.

#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace quirn {

struct HttpStatus {
  std::int64_t code;
  std::string_view reason;
  std::string_view description;
};

// In the order of their codes.
std::span<const HttpStatus> httpStatusCodes();

// "4xx Client Error" for 404.
std::string_view httpStatusClass(std::int64_t code);

}  // namespace quirn
