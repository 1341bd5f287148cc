// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <fmt/format.h>

#include <array>
#include <charconv>
#include <cmath>
#include <vector>

#include "platform/base64.h"
#include "platform/text.h"
#include "workbench/date_text.h"
#include "workbench/jwt.h"
#include "workbench/structured_support.h"
#include "workbench/structured_tools.h"

namespace quirn {
namespace {

using platform::JsonValue;

std::vector<std::string_view> partsOf(std::string_view token) {
  std::vector<std::string_view> parts;
  for (std::size_t dot = token.find('.'); dot != std::string_view::npos; dot = token.find('.')) {
    parts.push_back(token.substr(0, dot));
    token.remove_prefix(dot + 1);
  }
  parts.push_back(token);
  return parts;
}

JsonValue decodedPart(std::string_view part, std::string_view name) {
  std::string base64(part);
  std::ranges::replace(base64, '-', '+');
  std::ranges::replace(base64, '_', '/');
  base64.append((4 - base64.size() % 4) % 4, '=');
  const auto json = platform::base64Decoded(base64, platform::Base64Alphabet::standard);
  if (!json) throw TextToolError(fmt::format("The {} isn't valid base64url.", name));
  JsonValue value = jsonInput(*json, fmt::format("The {} isn't valid JSON.", name));
  value.sortKeys();
  return value;
}

// The number as it stands if it is no instant of the calendar.
std::string instantText(const std::string& number, std::chrono::sys_seconds now) {
  double seconds = NAN;
  std::from_chars(number.data(), number.data() + number.size(), seconds);
  constexpr double firstSecond = -62135596800;  // of the year 1
  constexpr double lastSecond = 253402300799;   // of the year 9999
  if (!(seconds >= firstSecond && seconds < lastSecond + 1)) return number;
  const std::string date = isoText({.seconds = static_cast<std::int64_t>(std::floor(seconds))});
  const auto elapsed = static_cast<double>(now.time_since_epoch().count());
  return fmt::format("{} ({})", date, relativeText(seconds - elapsed));
}

std::string claims(const JsonValue& payload, std::chrono::sys_seconds now) {
  struct Claim {
    std::string_view key;
    std::string_view label;
  };
  static constexpr std::array<Claim, 3> known = {{{"iat", "Issued at"}, {"nbf", "Not before"}, {"exp", "Expires"}}};
  std::string lines;
  for (const auto& [key, label] : known) {
    const JsonValue* const value = payload.find(key);
    if (value == nullptr || value->number() == nullptr) continue;
    lines += lines.empty() ? "\n\nCLAIMS:\n" : "\n";
    lines += fmt::format("{} ({}): {}", label, key, instantText(value->number()->text, now));
  }
  return lines;
}

std::string describe(std::string_view input, const TextToolOptions&) {
  return jwtDescription(input, std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now()));
}

}  // namespace

std::string jwtDescription(std::string_view token, std::chrono::sys_seconds now) {
  const std::vector<std::string_view> parts = partsOf(platform::trimmed(token));
  if (parts.size() != 3) throw TextToolError("A JWT has three dot-separated parts (header.payload.signature).");
  const JsonValue header = decodedPart(parts[0], "header");
  const JsonValue payload = decodedPart(parts[1], "payload");
  return fmt::format("HEADER:\n{}\n\nPAYLOAD:\n{}\n\nSIGNATURE: {} (base64url, not verified){}",
                     header.text(platform::JsonLayout::pretty), payload.text(platform::JsonLayout::pretty), parts[2],
                     claims(payload, now));
}

const TextTool& jwtTool() {
  static const TextTool tool{
      .id = "dev.jwt",
      .name = "JWT Decoder",
      .shortName = "jwt",
      .icon = "lock.doc",
      .aliases = {"jwt", "json web token", "decode token", "bearer", "id token"},
      .blurb = "Inspect a JWT's header and payload (decode only — not verified).",
      .inputPlaceholder = "Paste a JWT (header.payload.signature)…",
      .sampleInput =
          "eyJhbGciOiJIUzI1NiIsInR5cCI6IkpXVCJ9."
          "eyJzdWIiOiIxMjM0NTY3ODkwIiwibmFtZSI6Ik9ybGEiLCJpYXQiOjE3MDAwMDAwMDAsImV4cCI6MTg5MzQ1NjAwMH0."
          "zM4oaqkFUvAju3bDrqDXBt_gXgw5LTmSTGuW3cGeZyU",
      .transform = describe,
  };
  return tool;
}

}  // namespace quirn
