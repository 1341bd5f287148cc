// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shell/listed_names.h"

#include <fmt/format.h>

#include <algorithm>

namespace quirn {

std::string listedNames(std::span<const std::string> names) {
  constexpr std::size_t mostNames = 3;
  const std::size_t named = std::min(mostNames, names.size());
  const std::string text = fmt::format("{}", fmt::join(names.first(named), ", "));
  return names.size() > named ? fmt::format("{}, +{} more", text, names.size() - named) : text;
}

}  // namespace quirn
