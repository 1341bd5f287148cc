// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A buffer of bytes that a decoder or a read fills: growing it doesn't clear what is about to be overwritten.

#pragma once

#include <cstddef>
#include <memory>
#include <new>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace quirn::platform {

// Leaves a value that is made without arguments as the memory is.
template <class Value>
struct UnclearedAllocator : std::allocator<Value> {
  template <class Other>
  struct rebind {
    using other = UnclearedAllocator<Other>;
  };

  template <class Type, class... Arguments>
  void construct(Type* place, Arguments&&... arguments) {
    if constexpr (sizeof...(Arguments) > 0) std::construct_at(place, std::forward<Arguments>(arguments)...);
  }
};

using Bytes = std::vector<std::byte, UnclearedAllocator<std::byte>>;

inline std::span<const std::byte> bytesOf(std::string_view text) {
  return std::as_bytes(std::span(text));
}

inline std::string_view textOf(std::span<const std::byte> bytes) {
  return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

inline void append(Bytes& bytes, std::span<const std::byte> more) {
  bytes.insert(bytes.end(), more.begin(), more.end());
}

}  // namespace quirn::platform
