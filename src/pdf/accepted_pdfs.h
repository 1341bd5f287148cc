// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the PDF operations accept: files of the PDF type, by name or, where that says nothing, by their beginning.

#pragma once

#include "core/accepted_inputs.h"

namespace quirn {

const AcceptedInputs& onePDF();
const AcceptedInputs& anyPDFs();  // one or more
const AcceptedInputs& twoOrMorePDFs();

}  // namespace quirn
