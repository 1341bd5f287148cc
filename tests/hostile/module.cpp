// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/registry.h"
#include "hostile/hostile_operations.h"

extern "C" [[gnu::visibility("default")]] void quirnRegisterModule(quirn::OperationRegistry& registry);

void quirnRegisterModule(quirn::OperationRegistry& registry) {
  registry.registerOperation(quirn::OperationType::of<quirn::hostile::DecoderOperation>());
  registry.registerOperation(quirn::OperationType::of<quirn::hostile::EchoOperation>());
  registry.registerOperation(quirn::OperationType::of<quirn::hostile::MergeOperation>());
  registry.registerOperation(quirn::OperationType::of<quirn::hostile::UnpackOperation>());
}
