// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Several pages on a sheet, side by side or as a booklet to be folded.

#pragma once

#include <array>

#include "core/budgets.h"
#include "core/operation.h"

namespace quirn {

struct PDFNUpConfig : OperationConfig {
  enum class Mode { twoUp, fourUp, sixUp, nineUp, booklet };
  Mode mode = Mode::twoUp;

  static Panel panel();
};

class PDFNUpOperation final : public ConfigurablePerFileOperation<PDFNUpConfig> {
 public:
  static constexpr std::string_view module = "pdf";
  static constexpr std::array budgets{Budget::pages, Budget::nesting};

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OutputFile processFileConfigured(const InputFile& input, const PDFNUpConfig& config,
                                   OperationContext& context) const override;
};

}  // namespace quirn
