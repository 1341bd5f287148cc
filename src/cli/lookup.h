// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Operations and categories by the names that people type.

#pragma once

#include <string>
#include <string_view>

#include "cli/exit_status.h"
#include "core/operation_category.h"
#include "core/registry.h"

namespace quirn::cli {

// Throws UsageError for an unknown one, with the nearest name.
const OperationType& operationNamed(const OperationRegistry& registry, const std::string& operationID);
OperationCategory categoryNamed(std::string_view name);

}  // namespace quirn::cli
