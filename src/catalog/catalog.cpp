// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "catalog/catalog.h"

#include "documents/hash_files_operation.h"
#include "documents/verify_checksums_operation.h"
#include "probes/identity_copy_operation.h"
#include "workbench/all_text_tools.h"
#include "workbench/text_tool_operation.h"

namespace quirn {

void registerAllOperations(OperationRegistry& registry) {
  for (const TextTool* tool : allTextTools()) registry.registerOperation(textToolOperation(*tool));
  registry.registerOperation(OperationType::of<HashFilesOperation>());
  registry.registerOperation(OperationType::of<ChecksumVerifyOperation>());
  registry.registerOperation(OperationType::of<IdentityCopyOperation>());
}

}  // namespace quirn
