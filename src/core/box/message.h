// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The bytes of messages between the program and its workers: numbers and texts, one after the other, and one message
// after the other. Both ends are the same program on the same machine, so numbers are as the machine has them; what
// comes from a worker is a stranger's all the same, and a reader takes nothing on trust.

#pragma once

#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

#include "core/reflection.h"

namespace quirn::box {

// A message that doesn't hold what its kind has.
class DamagedMessage final : public std::runtime_error {
 public:
  DamagedMessage() : std::runtime_error("damaged message") {}
};

class MessageWriter {
 public:
  MessageWriter& number(std::int64_t value);
  MessageWriter& text(std::string_view value);
  template <class Enum>
  MessageWriter& choice(Enum value) {
    static_assert(std::is_enum_v<Enum>);
    return number(static_cast<std::int64_t>(value));
  }

  // Another message, or several, behind this one.
  void append(const MessageWriter& other) { bytes_ += other.bytes_; }

  // Begins anew, in the same memory.
  void clear() { bytes_.clear(); }

  const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
};

// Holds a view of the message. Everything throws DamagedMessage for bytes that are not what is asked for.
class MessageReader {
 public:
  explicit MessageReader(std::string_view bytes) : rest_(bytes) {}

  std::int64_t number();
  // One from 0 to `most`.
  std::int64_t number(std::int64_t most);
  // At most `longest` bytes long.
  std::string_view text(std::size_t longest = std::string_view::npos);
  template <class Enum>
  Enum choice() {
    return static_cast<Enum>(number(static_cast<std::int64_t>(enumeratorCount<Enum>()) - 1));
  }
  bool isAtEnd() const { return rest_.empty(); }
  // What has not been read.
  std::string_view rest() const { return rest_; }

 private:
  std::string_view take(std::size_t count);

  std::string_view rest_;
};

}  // namespace quirn::box
