// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/box/module_operations.h"

#include <map>
#include <mutex>
#include <stdexcept>

#include "platform/module.h"

namespace quirn::box {

const OperationRegistry& operationsOfModule(const std::string& module) {
  static std::mutex mutex;
  static std::map<std::string, OperationRegistry> loaded;  // guarded by mutex
  const std::scoped_lock guard(mutex);
  if (const auto found = loaded.find(module); found != loaded.end()) return found->second;
  const auto registerModule = reinterpret_cast<RegisterModule>(platform::moduleFunction(module, registerModuleName));
  OperationRegistry& registry = loaded[module];
  registerModule(registry);
  return registry;
}

OperationType withCode(const OperationType& type) {
  if (!type.isDescriptionAlone()) return type;
  const OperationType* const found = operationsOfModule(std::string(type.module())).byID(type.info().operationID);
  if (found == nullptr) throw std::runtime_error("a module lacks an operation that is said to be in it");
  return *found;
}

}  // namespace quirn::box
