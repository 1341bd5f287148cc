// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Numbers the pages, as part of their content.

#pragma once

#include <array>
#include <string>

#include "core/budgets.h"
#include "core/operation.h"
#include "platform/pdf_geometry.h"

namespace quirn {

struct PDFPageNumbersConfig : OperationConfig {
  enum class Format { plain, page, ofTotal, bates };
  enum class Position { bottomCenter, bottomRight, bottomLeft, topRight };
  Format format = Format::ofTotal;
  Position position = Position::bottomCenter;
  int start = 1;
  std::string batesPrefix = "DOC";

  static Panel panel();
};

// A box 260 points wide and 16 high at the edge of a page's media box.
platform::PDFRectangle pageNumberRectangle(const platform::PDFRectangle& mediaBox,
                                           PDFPageNumbersConfig::Position position);

class PDFPageNumbersOperation final : public ConfigurablePerFileOperation<PDFPageNumbersConfig> {
 public:
  static constexpr std::string_view module = "pdf";
  static constexpr std::array budgets{Budget::pages, Budget::nesting};

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OutputFile processFileConfigured(const InputFile& input, const PDFPageNumbersConfig& config,
                                   OperationContext& context) const override;
};

}  // namespace quirn
