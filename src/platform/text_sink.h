// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Text that grows by many short pieces. They are gathered in a block that stays in the processor's cache;
// appending each to a string would cost more than finding it.

#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <string>
#include <string_view>

namespace quirn::platform {

class TextSink {
 public:
  // Appends to `out`, which holds all of it only after flush().
  explicit TextSink(std::string& out) : out_(out) {}

  void put(char character) {
    if (used_ == block_.size()) flush();
    block_[used_++] = character;
  }

  // Inlined by force: the compiler thinks it too long, and it is called twice a token.
  [[gnu::always_inline]] void put(std::string_view text) {
    if (text.size() > block_.size() - used_) return putLong(text);
    copy(block_.data() + used_, text.data(), text.size());
    used_ += text.size();
  }

  // The first `count` characters of `text`, which is moved as a whole.
  template <std::size_t size>
  void putFrom(const std::array<char, size>& text, std::size_t count) {
    if (size > block_.size() - used_) flush();
    std::memcpy(block_.data() + used_, text.data(), size);
    used_ += count;
  }

  // `count` times the same.
  void fill(std::size_t count, char character) {
    if (count > block_.size() - used_) flush();
    if (count > block_.size()) {
      out_.append(count, character);
      return;
    }
    std::memset(block_.data() + used_, character, count);
    used_ += count;
  }

  void flush() {
    out_.append(block_.data(), used_);
    used_ = 0;
  }

  std::size_t size() const { return out_.size() + used_; }

 private:
  // Two moves that may overlap do for what is mostly there: words and numbers.
  static void copy(char* to, const char* from, std::size_t size) {
    if (size > 32) {
      std::memcpy(to, from, size);
    } else if (size >= 16) {
      copyEnds<16>(to, from, size);
    } else if (size >= 8) {
      copyEnds<8>(to, from, size);
    } else if (size >= 4) {
      copyEnds<4>(to, from, size);
    } else {
      for (std::size_t i = 0; i < size; ++i) to[i] = from[i];
    }
  }

  template <std::size_t width>
  static void copyEnds(char* to, const char* from, std::size_t size) {
    std::array<char, width> first;
    std::array<char, width> last;
    std::memcpy(first.data(), from, width);
    std::memcpy(last.data(), from + size - width, width);
    std::memcpy(to, first.data(), width);
    std::memcpy(to + size - width, last.data(), width);
  }

  void putLong(std::string_view text) {
    flush();
    if (text.size() > block_.size()) {
      out_ += text;
    } else {
      put(text);
    }
  }

  std::string& out_;
  std::size_t used_ = 0;
  std::array<char, 16384> block_;
};

}  // namespace quirn::platform
