// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/nano_id_tool.h"

#include "platform/random.h"
#include "workbench/lines.h"

namespace quirn {
namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789_-";

std::string transform(std::string_view, const TextToolOptions& options) {
  const std::int64_t size = options.integer("size", 21);
  return linesOf(options.integer("count", 5), [=] { return platform::randomText(size, alphabet); });
}

}  // namespace

const TextTool& nanoIDTool() {
  static const TextTool tool{
      .id = "dev.nanoid",
      .name = "Nano ID Generator",
      .shortName = "nanoid",
      .icon = "number.square",
      .aliases = {"nanoid", "nano id", "short id", "unique id", "random id"},
      .blurb = "Generate compact, URL-safe random identifiers.",
      .isGenerator = true,
      .controls = {StepperControl{"size", "Size", 4, 64, 21}, StepperControl{"count", "Count", 1, 100, 5}},
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
