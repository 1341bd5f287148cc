// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Puts the pages of all inputs into one document, in order.

#pragma once

#include <array>

#include "core/budgets.h"
#include "core/operation.h"

namespace quirn {

class PDFMergeOperation final : public QuirnOperation {
 public:
  static constexpr std::string_view module = "pdf";
  static constexpr std::array budgets{Budget::pages, Budget::nesting};

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OperationResult run(std::span<const InputFile> inputs, OperationContext& context) const override;
};

}  // namespace quirn
