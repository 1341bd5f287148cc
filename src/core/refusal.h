// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Why an operation can't run on some inputs, in one line for the person who looks for it.

#pragma once

#include <span>
#include <string>

#include "core/operation_type.h"

namespace quirn {

// "Needs two or more PDFs.", "Needs one or more PDFs; “notes.txt” isn’t one.", "Isn’t built yet."
// Empty where it can run.
std::string refusal(const OperationType& type, std::span<const InputFile> inputs);

}  // namespace quirn
