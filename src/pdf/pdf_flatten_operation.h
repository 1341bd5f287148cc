// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Makes annotations and form fields part of the pages that they stand on.

#pragma once

#include <array>

#include "core/budgets.h"
#include "core/operation.h"

namespace quirn {

class PDFFlattenOperation final : public PerFileOperation {
 public:
  static constexpr std::string_view module = "pdf";
  static constexpr std::array budgets{Budget::pages, Budget::nesting};

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OutputFile processFile(const InputFile& input, OperationContext& context) const override;
};

}  // namespace quirn
