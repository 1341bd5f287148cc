// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/box/message.h"

namespace quirn::box {

MessageWriter& MessageWriter::number(std::int64_t value) {
  bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
  return *this;
}

MessageWriter& MessageWriter::text(std::string_view value) {
  number(static_cast<std::int64_t>(value.size()));
  bytes_.append(value);
  return *this;
}

std::int64_t MessageReader::number() {
  std::int64_t value = 0;
  std::memcpy(&value, take(sizeof value).data(), sizeof value);
  return value;
}

std::int64_t MessageReader::number(std::int64_t most) {
  const std::int64_t value = number();
  if (value < 0 || value > most) throw DamagedMessage();
  return value;
}

std::string_view MessageReader::text(std::size_t longest) {
  const auto size = static_cast<std::uint64_t>(number());
  if (size > longest) throw DamagedMessage();
  return take(size);
}

std::string_view MessageReader::take(std::size_t count) {
  if (count > rest_.size()) throw DamagedMessage();
  const std::string_view taken = rest_.substr(0, count);
  rest_.remove_prefix(count);
  return taken;
}

}  // namespace quirn::box
