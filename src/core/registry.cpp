// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/registry.h"

#include <algorithm>
#include <array>
#include <utility>

namespace quirn {
namespace {

std::optional<OperationCategory> categoryOf(const ContentType& type) {
  using enum OperationCategory;
  constexpr std::array kinds{std::pair(ContentKind::pdf, pdf),     std::pair(ContentKind::image, image),
                             std::pair(ContentKind::movie, video), std::pair(ContentKind::video, video),
                             std::pair(ContentKind::audio, audio), std::pair(ContentKind::archive, archive),
                             std::pair(ContentKind::gzip, archive)};
  for (const auto& [kind, category] : kinds) {
    if (type.conformsTo(kind)) return category;
  }
  return std::nullopt;
}

}  // namespace

OperationRegistry& OperationRegistry::shared() {
  static OperationRegistry registry;
  return registry;
}

void OperationRegistry::registerOperation(OperationType type) {
  if (!byID_.emplace(type.info().operationID, operations_.size()).second) return;
  operations_.push_back(std::move(type));
}

const OperationType* OperationRegistry::byID(std::string_view operationID) const {
  const auto found = byID_.find(operationID);
  return found == byID_.end() ? nullptr : &operations_[found->second];
}

std::vector<const OperationType*> OperationRegistry::suggestions(std::span<const InputFile> inputs) const {
  std::vector<const OperationType*> types;
  for (const OperationType& type : operations_) {
    if (type.canRun(inputs)) types.push_back(&type);
  }
  if (const auto dominant = dominantCategory(inputs)) {
    std::ranges::stable_partition(types, [&](const OperationType* type) { return type->info().category == *dominant; });
  }
  return types;
}

std::optional<OperationCategory> dominantCategory(std::span<const InputFile> inputs) {
  std::map<OperationCategory, std::size_t> counts;
  for (const InputFile& input : inputs) {
    if (const auto category = categoryOf(input.contentType)) ++counts[*category];
  }
  const auto largest = std::ranges::max_element(counts, {}, [](const auto& entry) { return entry.second; });
  return largest == counts.end() ? std::nullopt : std::optional(largest->first);
}

}  // namespace quirn
