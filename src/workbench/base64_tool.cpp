// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/base64_tool.h"

#include "platform/base64.h"
#include "workbench/tool_parts.h"

namespace quirn {
namespace {

using platform::Base64Alphabet;

std::string transform(std::string_view input, const TextToolOptions& options) {
  const auto alphabet = options.boolean("url") ? Base64Alphabet::urlSafe : Base64Alphabet::standard;
  if (!isMode(options, "Decode")) return platform::base64Encoded(input, alphabet);
  auto bytes = platform::base64Decoded(platform::trimmed(input), alphabet);
  if (!bytes) throw TextToolError("Not valid Base64.");
  return textOf(*std::move(bytes), "Decoded bytes aren’t valid UTF-8 text.");
}

}  // namespace

const TextTool& base64Tool() {
  static const TextTool tool{
      .id = "dev.base64",
      .name = "Base64",
      .shortName = "base64",
      .icon = "textformat.abc.dottedunderline",
      .aliases = {"base64", "b64", "encode", "decode"},
      .blurb = "Encode text to Base64 or decode it back.",
      .inputPlaceholder = "Text to encode, or Base64 to decode…",
      .takesBytes = true,
      .controls = {modeControl("Encode", "Decode"), ToggleControl{"url", "URL-safe", false}},
      .sampleInput = "Hello, Quirn!",
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
