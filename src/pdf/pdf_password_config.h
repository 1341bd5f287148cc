// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The settings of protecting and unlocking: one password.

#pragma once

#include <string>

#include "core/panel.h"

namespace quirn {

// Each operation has a panel of its own for it: a new password is typed twice, a current one once.
struct PDFPasswordConfig : OperationConfig {
  std::string password;
};

}  // namespace quirn
