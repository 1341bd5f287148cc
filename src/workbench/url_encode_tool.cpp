// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/url_encode_tool.h"

#include "platform/unicode.h"
#include "workbench/percent_coding.h"
#include "workbench/rewriting.h"
#include "workbench/tool_parts.h"

namespace quirn {
namespace {

constexpr bool isAsciiAlphanumeric(unsigned char byte) {
  return (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z') || (byte >= 'a' && byte <= 'z');
}

// What has to be looked at in a part of a URL, and in a whole one.
constexpr ByteSet specialInComponent = bytesWhere([](unsigned char byte) { return !isAsciiAlphanumeric(byte); });
constexpr ByteSet specialInURL = bytesWhere([](unsigned char byte) {
  constexpr std::string_view punctuation = "-._~:/?#[]@!$&'()*+,;=";
  return !isAsciiAlphanumeric(byte) && punctuation.find(static_cast<char>(byte)) == std::string_view::npos;
});

std::size_t appendEncoded(std::string& result, std::string_view text, std::size_t at) {
  const auto [scalar, length] = platform::firstScalar(text.substr(at));
  const std::string_view bytes = text.substr(at, length);
  if (length == 1 && scalar >= 0x80) throw TextToolError("Couldn’t percent-encode this text.");
  if (scalar >= 0x80 && platform::isAlphanumeric(scalar)) {
    result += bytes;
  } else {
    appendPercentEncoded(result, bytes);
  }
  return at + length;
}

std::string transform(std::string_view input, const TextToolOptions& options) {
  if (!isMode(options, "Decode")) {
    return rewritten(input, options.boolean("component") ? specialInComponent : specialInURL, &appendEncoded);
  }
  auto text = percentDecoded(input);
  if (!text) throw TextToolError("Not valid percent-encoding — check for a stray “%” or a bad escape.");
  return *std::move(text);
}

}  // namespace

const TextTool& urlEncodeTool() {
  static const TextTool tool{
      .id = "dev.url-encode",
      .name = "URL Encode/Decode",
      .shortName = "url",
      .icon = "percent",
      .aliases = {"url encode", "url decode", "percent encode", "uri", "escape url"},
      .blurb = "Percent-encode text for URLs, or decode it back.",
      .inputPlaceholder = "URL or text to encode / decode…",
      .takesBytes = true,
      .controls = {modeControl("Encode", "Decode"), ToggleControl{"component", "Full component", false}},
      .sampleInput = "https://example.com/café menu?dish=crème brûlée&table=4",
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
