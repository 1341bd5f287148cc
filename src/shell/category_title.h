// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the families of operations are called where people read them.

#pragma once

#include <string_view>

#include "core/operation_category.h"

namespace quirn {

std::string_view categoryTitle(OperationCategory category);

}  // namespace quirn
