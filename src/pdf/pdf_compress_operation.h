// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Makes documents small for the screen.

#pragma once

#include <array>

#include "core/budgets.h"
#include "core/operation.h"

namespace quirn {

class PDFCompressOperation final : public QuirnOperation {
 public:
  static constexpr std::string_view module = "pdf";
  static constexpr std::array budgets{Budget::pages, Budget::nesting};

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OperationResult run(std::span<const InputFile> inputs, OperationContext& context) const override;
};

// What a run says in the end, from the bytes before and after.
std::string compressionSummary(std::int64_t before, std::int64_t after);

}  // namespace quirn
