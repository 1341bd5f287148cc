// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Removes what stands on the pages beside their content: notes, markup, links and form fields.

#pragma once

#include <array>

#include "core/budgets.h"
#include "core/operation.h"

namespace quirn {

class PDFDeleteAnnotationsOperation final : public PerFileOperation {
 public:
  static constexpr std::string_view module = "pdf";
  static constexpr std::array budgets{Budget::pages, Budget::nesting};

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OutputFile processFile(const InputFile& input, OperationContext& context) const override;
};

}  // namespace quirn
