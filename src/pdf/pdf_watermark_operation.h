// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Sets a line of gray text across every page, as part of its content.

#pragma once

#include <array>
#include <string>

#include "core/budgets.h"
#include "core/operation.h"
#include "platform/pdf_geometry.h"

namespace quirn {

struct PDFWatermarkConfig : OperationConfig {
  enum class Position { center, top, bottom };
  std::string text = "CONFIDENTIAL";
  double fontSize = 48;   // points
  double opacity = 0.25;  // a fraction
  Position position = Position::center;

  static Panel panel();
};

// The band across the page's media box that the text stands in.
platform::PDFRectangle watermarkBand(const platform::PDFRectangle& mediaBox, const PDFWatermarkConfig& config);

class PDFWatermarkOperation final : public ConfigurablePerFileOperation<PDFWatermarkConfig> {
 public:
  static constexpr std::string_view module = "pdf";
  static constexpr std::array budgets{Budget::pages, Budget::nesting};

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OutputFile processFileConfigured(const InputFile& input, const PDFWatermarkConfig& config,
                                   OperationContext& context) const override;
};

}  // namespace quirn
