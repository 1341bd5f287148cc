// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A probe for developers: starts another program and reports that it ran, so that a packaged Quirn
// can be seen to do so on a machine. It takes no input and makes no file.

#pragma once

#include "core/operation.h"

namespace quirn {

class DMGProbeOperation final : public QuirnOperation {
 public:
  static constexpr Placement placement = Placement::inProcess;

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OperationResult run(std::span<const InputFile> inputs, OperationContext& context) const override;
};

}  // namespace quirn
