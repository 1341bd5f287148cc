// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a decoder does that a stranger's file has taken over.

#pragma once

#include <string>
#include <vector>

#include "core/operation_context.h"

namespace quirn::hostile {

// The attacks on the system, each of which must be refused.
std::vector<std::string> attacksOnTheSystem();

// True if the attack succeeded. Those on the program itself don't come back.
bool attemptAttack(const std::string& attack, const std::string& argument, const InputFile& input,
                   OperationContext& context);

}  // namespace quirn::hostile
