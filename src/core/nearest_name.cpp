// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/nearest_name.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

namespace quirn {
namespace {

// Insertions, deletions, replacements and swaps of neighbours (optimal string alignment).
std::size_t editDistance(std::string_view a, std::string_view b) {
  std::vector<std::vector<std::size_t>> distance(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
  for (std::size_t i = 0; i <= a.size(); ++i) {
    for (std::size_t j = 0; j <= b.size(); ++j) {
      if (i == 0 || j == 0) {
        distance[i][j] = i + j;
        continue;
      }
      const bool same = a[i - 1] == b[j - 1];
      distance[i][j] =
          std::min({distance[i - 1][j] + 1, distance[i][j - 1] + 1, distance[i - 1][j - 1] + (same ? 0 : 1)});
      const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
      if (swapped) distance[i][j] = std::min(distance[i][j], distance[i - 2][j - 2] + 1);
    }
  }
  return distance[a.size()][b.size()];
}

}  // namespace

std::optional<std::string> nearestName(std::string_view written, std::span<const std::string> names) {
  constexpr std::size_t longestName = 100;  // the cost is a product of lengths
  if (written.size() > longestName) return std::nullopt;
  const std::size_t tolerance = written.size() / 3 + 1;
  std::optional<std::string> nearest;
  std::size_t least = tolerance + 1;
  for (const std::string& name : names) {
    const std::size_t distance = editDistance(written, name);
    if (distance < least) {
      least = distance;
      nearest = name;
    }
  }
  return nearest;
}

std::string didYouMean(std::string_view written, std::span<const std::string> names) {
  const auto nearest = nearestName(written, names);
  return nearest ? fmt::format(" Did you mean “{}”?", *nearest) : "";
}

}  // namespace quirn
