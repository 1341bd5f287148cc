// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/nearest_name.h"

#include <fmt/format.h>

#include <algorithm>
#include <vector>

namespace quirn {
namespace {

// Insertions, deletions, replacements and swaps of neighbours (optimal string alignment).
class EditDistance {
 public:
  std::size_t between(std::string_view a, std::string_view b) {
    const std::size_t width = b.size() + 1;
    cells_.resize((a.size() + 1) * width);
    const auto at = [&](std::size_t i, std::size_t j) -> std::size_t& { return cells_[i * width + j]; };
    for (std::size_t i = 0; i <= a.size(); ++i) at(i, 0) = i;
    for (std::size_t j = 0; j <= b.size(); ++j) at(0, j) = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
      for (std::size_t j = 1; j <= b.size(); ++j) {
        const bool same = a[i - 1] == b[j - 1];
        at(i, j) = std::min({at(i - 1, j) + 1, at(i, j - 1) + 1, at(i - 1, j - 1) + (same ? 0 : 1)});
        const bool swapped = i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1];
        if (swapped) at(i, j) = std::min(at(i, j), at(i - 2, j - 2) + 1);
      }
    }
    return at(a.size(), b.size());
  }

 private:
  std::vector<std::size_t> cells_;  // kept from one pair to the next
};

std::size_t lengthDifference(std::string_view a, std::string_view b) {
  return std::max(a.size(), b.size()) - std::min(a.size(), b.size());
}

}  // namespace

std::optional<std::string> nearestName(std::string_view written, std::span<const std::string> names) {
  constexpr std::size_t longestName = 100;  // the cost is a product of lengths
  if (written.size() > longestName) return std::nullopt;
  const std::size_t tolerance = written.size() / 3 + 1;
  std::optional<std::string> nearest;
  std::size_t least = tolerance + 1;
  EditDistance edits;
  for (const std::string& name : names) {
    if (lengthDifference(written, name) >= least) continue;  // It can't be nearer.
    const std::size_t distance = edits.between(written, name);
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
