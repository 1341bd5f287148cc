// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// An open file of the kernel, owned.

#pragma once

#include <cstddef>
#include <span>
#include <utility>

namespace quirn::platform {

class FileDescriptor {
 public:
  FileDescriptor() = default;
  // Takes ownership of `number`; a negative one owns nothing.
  explicit FileDescriptor(int number) : number_(number) {}
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept {
    std::swap(number_, other.number_);
    return *this;
  }
  ~FileDescriptor();

  int number() const { return number_; }
  explicit operator bool() const { return number_ >= 0; }

 private:
  int number_ = -1;
};

// How many files this process may have open at once.
std::size_t descriptorLimit();

// Throws std::system_error for the current errno. `what` names the call, for developers.
[[noreturn]] void throwErrno(const char* what);

// Writes all of `bytes`, however many calls that takes. Throws std::system_error.
void writeAll(int descriptor, std::span<const std::byte> bytes);

}  // namespace quirn::platform
