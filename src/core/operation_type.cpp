// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/operation_type.h"

#include <utility>

namespace quirn {

OperationType OperationType::of(Record record) {
  OperationType type;
  type.info_ = std::make_shared<const OperationInfo>(std::move(record.info));
  type.accepts_ = std::make_shared<const AcceptedInputs>(std::move(record.accepts));
  type.isInteractive_ = record.isInteractive;
  type.placement_ = Placement::inProcess;
  type.make_ = std::move(record.make);
  type.canRun_ = [accepts = type.accepts_](std::span<const InputFile> inputs) { return accepts->accepts(inputs); };
  return type;
}

OperationType OperationType::unbuilt(OperationInfo info) {
  OperationType type = of({.info = std::move(info)});
  type.canRun_ = [](std::span<const InputFile>) { return false; };
  return type;
}

std::vector<Budget> OperationType::budgets() const {
  if (placement_ == Placement::inProcess) return {};
  std::vector<Budget> all(budgetsOfEveryBox.begin(), budgetsOfEveryBox.end());
  all.insert(all.end(), ownBudgets_.begin(), ownBudgets_.end());
  return all;
}

OperationType OperationType::placedIn(Placement placement, std::string_view module) const {
  OperationType moved = *this;
  moved.placement_ = placement;
  moved.module_ = module;
  return moved;
}

}  // namespace quirn
