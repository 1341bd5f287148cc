// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The operations that a shared module brings.

#pragma once

#include <string>

#include "core/registry.h"

namespace quirn::box {

// Exported by every module, as `extern "C"`: registers the operations whose code it holds.
using RegisterModule = void (*)(OperationRegistry& registry);
inline constexpr const char* registerModuleName = "quirnRegisterModule";

// Loads the module where that has not happened yet. Throws std::runtime_error. May be called from any thread.
const OperationRegistry& operationsOfModule(const std::string& module);

// The operation with its code, taken from its module where it is in one. Throws std::runtime_error.
OperationType withCode(const OperationType& type);

}  // namespace quirn::box
