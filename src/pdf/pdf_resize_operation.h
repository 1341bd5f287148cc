// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Puts every page on paper of one size: a larger one shrinks, a smaller one stands in the middle.

#pragma once

#include <array>

#include "core/budgets.h"
#include "core/operation.h"
#include "pdf/paper_size.h"

namespace quirn {

struct PDFResizeConfig : OperationConfig {
  enum class Orientation { auto_, portrait, landscape };
  PaperSize paper = PaperSize::a4;
  Orientation orientation = Orientation::auto_;

  static Panel panel();
};

class PDFResizeOperation final : public ConfigurablePerFileOperation<PDFResizeConfig> {
 public:
  static constexpr std::string_view module = "pdf";
  static constexpr std::array budgets{Budget::pages, Budget::nesting};

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OutputFile processFileConfigured(const InputFile& input, const PDFResizeConfig& config,
                                   OperationContext& context) const override;
};

}  // namespace quirn
