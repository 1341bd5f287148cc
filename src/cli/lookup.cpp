// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/lookup.h"

#include <fmt/format.h>

#include <vector>

#include "core/nearest_name.h"
#include "core/reflection.h"

namespace quirn::cli {

const OperationType& operationNamed(const OperationRegistry& registry, const std::string& operationID) {
  if (const OperationType* type = registry.byID(operationID)) return *type;
  std::vector<std::string> names;
  for (const OperationType& type : registry.operations()) names.emplace_back(type.info().operationID);
  throw UsageError(fmt::format("Quirn doesn’t have an operation called “{}.”{} “quirn list” names all.", operationID,
                               didYouMean(operationID, names)));
}

OperationCategory categoryNamed(std::string_view name) {
  if (const auto category = enumeratorNamed<OperationCategory>(name)) return *category;
  std::vector<std::string> names;
  for (std::size_t i = 0; i < enumeratorCount<OperationCategory>(); ++i) {
    names.emplace_back(enumeratorName(static_cast<OperationCategory>(i)));
  }
  throw UsageError(
      fmt::format("There is no category “{}”. Accepted: {}.{}", name, fmt::join(names, ", "), didYouMean(name, names)));
}

}  // namespace quirn::cli
