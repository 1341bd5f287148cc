// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#pragma once

#include <string>

#include "core/panel.h"

namespace quirn {

// Of the operations that take a password; each has a panel of its own for it.
struct PDFPasswordConfig : OperationConfig {
  std::string password;
};

}  // namespace quirn
