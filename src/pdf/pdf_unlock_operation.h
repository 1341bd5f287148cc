// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Writes the pages of a protected document into one that anybody can open.

#pragma once

#include <array>

#include "core/budgets.h"
#include "core/operation.h"
#include "pdf/pdf_password_config.h"

namespace quirn {

class PDFUnlockOperation final : public ConfigurablePerFileOperation<PDFPasswordConfig> {
 public:
  static constexpr std::string_view module = "pdf";
  static constexpr std::array budgets{Budget::pages, Budget::nesting};

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  static Panel panel();
  OutputFile processFileConfigured(const InputFile& input, const PDFPasswordConfig& config,
                                   OperationContext& context) const override;
};

}  // namespace quirn
