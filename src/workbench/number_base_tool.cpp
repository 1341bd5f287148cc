// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/number_base_tool.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdint>
#include <optional>

#include "core/input_file.h"
#include "workbench/lines.h"
#include "workbench/tool_parts.h"

namespace quirn {
namespace {

struct Base {
  std::string_view name;
  int radix;
  std::string_view prefix;
};

constexpr std::array<Base, 4> bases{
    {{"Decimal", 10, ""}, {"Hexadecimal", 16, "0x"}, {"Binary", 2, "0b"}, {"Octal", 8, "0o"}}};

const Base& baseNamed(std::string_view name) {
  const auto found = std::ranges::find(bases, name, &Base::name);
  return found == bases.end() ? bases.front() : *found;
}

const Base* baseOfPrefix(std::string_view number) {
  for (const Base& base : bases) {
    if (!base.prefix.empty() && number.starts_with(base.prefix)) return &base;
  }
  return nullptr;
}

std::optional<std::uint64_t> parsed(std::string_view digits, int radix) {
  if (digits.starts_with('+')) digits.remove_prefix(1);
  std::uint64_t value = 0;
  const char* const end = digits.data() + digits.size();
  const auto [stop, error] = std::from_chars(digits.data(), end, value, radix);
  return error == std::errc() && stop == end ? std::optional(value) : std::nullopt;
}

std::string converted(std::string_view line, const Base& usualBase) {
  std::string number = lowerCased(line);
  const Base* const stated = baseOfPrefix(number);
  const Base& base = stated != nullptr ? *stated : usualBase;
  if (stated != nullptr) number.erase(0, base.prefix.size());
  std::erase_if(number, [](char character) { return character == '_' || character == ' ' || character == '\t'; });
  const auto value = parsed(number, base.radix);
  if (!value) {
    throw TextToolError(
        fmt::format("Could not parse \"{}\" as a {} number, or it exceeds the unsigned 64-bit "
                    "limit (max 18446744073709551615).",
                    line, base.name));
  }
  return fmt::format("DEC: {0} | HEX: 0x{0:x} | OCT: 0o{0:o} | BIN: 0b{0:b}", *value);
}

std::string transform(std::string_view input, const TextToolOptions& options) {
  const Base& base = baseNamed(options.text("from", "Decimal"));
  std::string lines;
  forEachPiece(input, '\n', [&](std::string_view line) {
    line = platform::trimmed(line);
    if (line.empty()) return;
    if (!lines.empty()) lines += '\n';
    lines += converted(line, base);
  });
  return lines;
}

}  // namespace

const TextTool& numberBaseTool() {
  static const TextTool tool{
      .id = "dev.base-convert",
      .name = "Number Base Converter",
      .shortName = "base",
      .icon = "number.square",
      .aliases = {"base", "radix", "hex", "binary", "octal", "decimal", "dec", "bin", "oct"},
      .blurb = "Convert numbers between decimal, hexadecimal, octal, and binary (one per line).",
      .inputPlaceholder = "One number per line…",
      .controls = {ChoiceControl{"from", "From base", {"Decimal", "Hexadecimal", "Binary", "Octal"}, "Decimal"}},
      .sampleInput = "255\n0xFF\n1010",
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
