// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Compresses files with gzip, and expands those that are compressed.

#pragma once

#include "core/operation.h"

namespace quirn {

class GzipOperation final : public QuirnOperation {
 public:
  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OperationResult run(std::span<const InputFile> inputs, OperationContext& context) const override;
};

}  // namespace quirn
