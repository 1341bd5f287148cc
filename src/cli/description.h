// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What an operation is, for people and for programs, read from the operation itself.

#pragma once

#include <string>

#include "core/operation_type.h"
#include "platform/json.h"

namespace quirn::cli {

// Identifier, name, category, icon and aliases, and whether it is built.
platform::JsonObject identityAsJson(const OperationType& type);

// Identity, accepted inputs and every control; of an operation that isn't built, its identity.
platform::JsonObject descriptionAsJson(const OperationType& type);
std::string descriptionAsText(const OperationType& type);

}  // namespace quirn::cli
