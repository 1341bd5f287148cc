// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Tells in a text file what is in each ZIP archive, without opening an entry.

#pragma once

#include "core/operation.h"

namespace quirn {

class ZipInspectOperation final : public PerFileOperation {
 public:
  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OutputFile processFile(const InputFile& input, OperationContext& context) const override;
};

}  // namespace quirn
