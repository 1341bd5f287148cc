// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The operations that Quirn is to have and that nobody has built yet: what they are called, and
// nothing else. An operation that is built leaves this list and states all of that itself.

#pragma once

#include <cstddef>
#include <string_view>

#include "core/operation_type.h"

namespace quirn {

// The type with that identifier; it runs on nothing. Throws std::logic_error if the list has none.
OperationType unbuiltOperation(std::string_view operationID);

std::size_t unbuiltOperationCount();

}  // namespace quirn
