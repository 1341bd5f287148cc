// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Checks the files that a checksum list names and writes a report of what it found. Files that
// don't match are findings of the report, not failures of the run.

#pragma once

#include "core/operation.h"

namespace quirn {

class ChecksumVerifyOperation final : public PerFileOperation {
 public:
  static constexpr Placement placement = Placement::inProcess;
  static constexpr bool readsNeighbours = true;

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OutputFile processFile(const InputFile& input, OperationContext& context) const override;
};

}  // namespace quirn
