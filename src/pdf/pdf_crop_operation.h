// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Trims the visible part of every page. What is cut off stays in the file.

#pragma once

#include <array>

#include "core/budgets.h"
#include "core/operation.h"
#include "platform/pdf_geometry.h"

namespace quirn {

struct PDFCropConfig : OperationConfig {
  // Percent of the visible page's height or width.
  double top = 0;
  double right = 0;
  double bottom = 0;
  double left = 0;

  static Panel panel();
};

// What margins leave of a box.
platform::PDFRectangle cropped(const platform::PDFRectangle& box, const PDFCropConfig& config);

class PDFCropOperation final : public ConfigurablePerFileOperation<PDFCropConfig> {
 public:
  static constexpr std::string_view module = "pdf";
  static constexpr std::array budgets{Budget::pages, Budget::nesting};

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OutputFile processFileConfigured(const InputFile& input, const PDFCropConfig& config,
                                   OperationContext& context) const override;
};

}  // namespace quirn
