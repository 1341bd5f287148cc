// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/ulid_tool.h"

#include "platform/random.h"
#include "workbench/lines.h"
#include "workbench/tool_parts.h"

namespace quirn {
namespace {

constexpr std::string_view alphabet = "0123456789ABCDEFGHJKMNPQRSTVWXYZ";

std::string ulid(std::int64_t milliseconds) {
  const std::uint64_t time = static_cast<std::uint64_t>(milliseconds) & 0xFFFF'FFFF'FFFF;
  std::string text;
  for (int shift = 45; shift >= 0; shift -= 5) text += alphabet[time >> shift & 31];
  return text + platform::randomText(16, alphabet);
}

std::string transform(std::string_view, const TextToolOptions& options) {
  return linesOf(options.integer("count", 5), [] { return ulid(millisecondsSince1970()); });
}

}  // namespace

const TextTool& ulidTool() {
  static const TextTool tool{
      .id = "dev.ulid",
      .name = "ULID Generator",
      .shortName = "ulid",
      .icon = "clock.badge",
      .aliases = {"ulid", "sortable id", "lexicographic id", "unique id"},
      .blurb = "Time-sortable unique identifiers (Crockford base32).",
      .isGenerator = true,
      .controls = {StepperControl{"count", "Count", 1, 100, 5}},
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
