// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Extracts each TAR archive, gzipped or not, into a folder of its own.

#pragma once

#include <array>

#include "core/budgets.h"
#include "core/operation.h"

namespace quirn {

class TarExtractOperation final : public PerFileOperation {
 public:
  static constexpr std::array budgets{Budget::entries};

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OutputFile processFile(const InputFile& input, OperationContext& context) const override;
};

}  // namespace quirn
