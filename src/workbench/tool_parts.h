// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Parts that the records and transforms of several tools are made of.

#pragma once

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

#include "platform/text.h"
#include "workbench/text_tool.h"

namespace quirn {

// The control of a tool that works in two directions.
inline ChoiceControl modeControl(std::string forth, std::string back) {
  return {"mode", "Mode", {forth, std::move(back)}, forth};
}

inline std::int64_t millisecondsSince1970() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

inline bool isMode(const TextToolOptions& options, std::string_view mode) {
  return options.text("mode", "") == mode;
}

inline bool isAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char byte) { return static_cast<unsigned char>(byte) < 0x80; });
}

// The bytes as text. Throws TextToolError with `message` where they are not UTF-8.
inline std::string textOf(std::string bytes, std::string_view message) {
  if (!platform::isUtf8(bytes)) throw TextToolError(std::string(message));
  return bytes;
}

}  // namespace quirn
