// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A worker: the program started again with nothing but two connections, to run operations on strangers' bytes.

#pragma once

#include <string>

#include "core/registry.h"

namespace quirn::box {

// The kind of a worker without a module.
inline constexpr const char* plainWorker = "plain";

// Runs what it is asked to, until the program that started it is gone; `kind` is a module's name, or plainWorker.
// `operations` are those of the program itself. Gives the exit status.
int runWorker(const std::string& kind, const OperationRegistry& operations);

}  // namespace quirn::box
