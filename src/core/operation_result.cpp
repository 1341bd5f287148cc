// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/operation_result.h"

#include <fmt/format.h>

#include <algorithm>

namespace quirn {

std::string failureSummary(std::size_t outputCount, const std::vector<FileFailure>& failures) {
  constexpr std::size_t mostNames = 3;
  const std::size_t named = std::min(mostNames, failures.size());
  std::string names = failures.front().fileName;
  for (std::size_t i = 1; i < named; ++i) names += ", " + failures[i].fileName;
  const std::size_t unnamed = failures.size() - named;
  const std::string more = unnamed > 0 ? fmt::format(", +{} more", unnamed) : "";
  return fmt::format("Created {} of {}. {} couldn’t be processed: {}{}.", outputCount, outputCount + failures.size(),
                     failures.size(), names, more);
}

}  // namespace quirn
