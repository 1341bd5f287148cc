// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/password_tool.h"

#include <fmt/format.h>

#include <cmath>

#include "platform/random.h"
#include "workbench/lines.h"

namespace quirn {
namespace {

// Without l, I, O, 0 and 1, which are mistaken for one another.
constexpr std::string_view lowerCase = "abcdefghijkmnopqrstuvwxyz";
constexpr std::string_view upperCase = "ABCDEFGHJKLMNPQRSTUVWXYZ";
constexpr std::string_view digits = "23456789";
constexpr std::string_view symbols = "!@#$%^&*()-_=+[]{}<>?";

std::string poolOf(const TextToolOptions& options) {
  std::string pool(lowerCase);
  if (options.boolean("upper")) pool += upperCase;
  if (options.boolean("digits")) pool += digits;
  if (options.boolean("symbols")) pool += symbols;
  return pool;
}

std::string transform(std::string_view, const TextToolOptions& options) {
  return passwordsFrom(poolOf(options), options.integer("length", 20), options.integer("count", 5));
}

}  // namespace

std::string passwordsFrom(std::string_view pool, std::int64_t length, std::int64_t count) {
  if (pool.size() < 2) throw TextToolError("Enable at least one character set.");
  const double bits = static_cast<double>(length) * std::log2(static_cast<double>(pool.size()));
  return linesOf(count, [=] { return platform::randomText(length, pool); }) +
         fmt::format("\n\n# ~{:.0f} bits of entropy each ({}-char alphabet)", bits, pool.size());
}

const TextTool& passwordTool() {
  static const TextTool tool{
      .id = "dev.password",
      .name = "Password Generator",
      .shortName = "password",
      .icon = "key.horizontal",
      .aliases = {"password", "passphrase", "random password", "secret"},
      .blurb = "Strong random passwords with a live entropy estimate.",
      .isGenerator = true,
      .controls = {StepperControl{"length", "Length", 4, 128, 20}, StepperControl{"count", "Count", 1, 50, 5},
                   ToggleControl{"upper", "A-Z", true}, ToggleControl{"digits", "0-9", true},
                   ToggleControl{"symbols", "Symbols", true}},
      .transform = &transform,
  };
  return tool;
}

}  // namespace quirn
