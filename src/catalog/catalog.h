// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What Quirn can do: every operation, in the order in which it is shown wherever nothing else
// orders it.

#pragma once

#include "core/registry.h"

namespace quirn {

// Fills the registry. Called once, at start-up.
void registerAllOperations(OperationRegistry& registry);

}  // namespace quirn
