// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/registry.h"
#include "pdf/pdf_bookmarks_operation.h"
#include "pdf/pdf_compress_operation.h"
#include "pdf/pdf_crop_operation.h"
#include "pdf/pdf_delete_annotations_operation.h"
#include "pdf/pdf_encrypt_operation.h"
#include "pdf/pdf_flatten_operation.h"
#include "pdf/pdf_merge_operation.h"
#include "pdf/pdf_metadata_operation.h"
#include "pdf/pdf_nup_operation.h"
#include "pdf/pdf_page_numbers_operation.h"
#include "pdf/pdf_repair_operation.h"
#include "pdf/pdf_resize_operation.h"
#include "pdf/pdf_split_operation.h"
#include "pdf/pdf_unlock_operation.h"
#include "pdf/pdf_watermark_operation.h"

extern "C" [[gnu::visibility("default")]] void quirnRegisterModule(quirn::OperationRegistry& registry);

void quirnRegisterModule(quirn::OperationRegistry& registry) {
  using namespace quirn;
  registry.registerOperation(OperationType::of<PDFBookmarksOperation>());
  registry.registerOperation(OperationType::of<PDFDeleteAnnotationsOperation>());
  registry.registerOperation(OperationType::of<PDFCompressOperation>());
  registry.registerOperation(OperationType::of<PDFCropOperation>());
  registry.registerOperation(OperationType::of<PDFEncryptOperation>());
  registry.registerOperation(OperationType::of<PDFFlattenOperation>());
  registry.registerOperation(OperationType::of<PDFMergeOperation>());
  registry.registerOperation(OperationType::of<PDFMetadataOperation>());
  registry.registerOperation(OperationType::of<PDFNUpOperation>());
  registry.registerOperation(OperationType::of<PDFPageNumbersOperation>());
  registry.registerOperation(OperationType::of<PDFRepairOperation>());
  registry.registerOperation(OperationType::of<PDFResizeOperation>());
  registry.registerOperation(OperationType::of<PDFSplitOperation>());
  registry.registerOperation(OperationType::of<PDFUnlockOperation>());
  registry.registerOperation(OperationType::of<PDFWatermarkOperation>());
}
