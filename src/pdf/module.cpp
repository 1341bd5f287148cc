// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/registry.h"
#include "pdf/pdf_delete_annotations_operation.h"

extern "C" [[gnu::visibility("default")]] void quirnRegisterModule(quirn::OperationRegistry& registry);

void quirnRegisterModule(quirn::OperationRegistry& registry) {
  using namespace quirn;
  registry.registerOperation(OperationType::of<PDFDeleteAnnotationsOperation>());
}
