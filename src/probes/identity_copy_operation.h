// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A probe for developers: copies its input unchanged, so that what every operation goes through can
// be seen without any work in between.

#pragma once

#include "core/operation.h"

namespace quirn {

class IdentityCopyOperation final : public PerFileOperation {
 public:
  static constexpr Placement placement = Placement::inProcess;

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OutputFile processFile(const InputFile& input, OperationContext& context) const override;
};

}  // namespace quirn
