// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// All operations, in the order in which they were registered. It is filled once at start-up and
// belongs to the interface thread.

#pragma once

#include <map>
#include <optional>
#include <span>
#include <string_view>
#include <vector>

#include "core/operation_type.h"

namespace quirn {

class OperationRegistry {
 public:
  // The one that the program uses.
  static OperationRegistry& shared();

  // Does nothing if an operation of that identifier is there already.
  void registerOperation(OperationType type);

  const std::vector<OperationType>& operations() const { return operations_; }

  // Null if there is none. The pointer holds until the next registration.
  const OperationType* byID(std::string_view operationID) const;

  // The operations that can run on exactly these inputs: first those of the category that most
  // inputs belong to, then the others, each in order of registration.
  std::vector<const OperationType*> suggestions(std::span<const InputFile> inputs) const;

 private:
  std::vector<OperationType> operations_;
  std::map<std::string_view, std::size_t> byID_;
};

// The category that the largest number of these inputs belongs to; nothing if none belongs to any.
std::optional<OperationCategory> dominantCategory(std::span<const InputFile> inputs);

}  // namespace quirn
