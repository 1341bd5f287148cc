// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A small JSONPath: $, .key, ['key'], [n], [*] and the same after .. at every depth.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "platform/json.h"

namespace quirn::json_path {

struct Key {
  std::string name;
  bool operator==(const Key&) const = default;
};
struct Index {
  std::int64_t position = 0;
  bool operator==(const Index&) const = default;
};
struct Wildcard {
  bool operator==(const Wildcard&) const = default;
};
using Selector = std::variant<Key, Index, Wildcard>;

struct Step {
  bool recursive = false;
  Selector selector;
  bool operator==(const Step&) const = default;
};

// Throws TextToolError.
std::vector<Step> parsedSteps(std::string_view path);

// What the steps lead to, in order; the values belong to `document`. Throws TextToolError if that
// would be more than anyone can use: each recursive step can multiply what the one before found.
std::vector<const platform::JsonValue*> matches(const platform::JsonValue& document, const std::vector<Step>& steps);

}  // namespace quirn::json_path
