// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Writes groups of a document's pages into files of their own.

#pragma once

#include <array>
#include <string>

#include "core/budgets.h"
#include "core/operation.h"

namespace quirn {

struct PDFSplitConfig : OperationConfig {
  enum class Mode { everyN, ranges };
  Mode mode = Mode::everyN;
  int pagesPerChunk = 1;
  std::string rangeText;
  int pageCount = 0;  // of the input; 0 if it can't be opened

  static Panel panel();
};

class PDFSplitOperation final : public ConfigurableOperation<PDFSplitConfig> {
 public:
  static constexpr std::string_view module = "pdf";
  static constexpr std::array budgets{Budget::pages, Budget::nesting};

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  static PDFSplitConfig configurationFor(std::span<const InputFile> inputs, OperationContext& context);

 protected:
  OperationResult runWith(std::span<const InputFile> inputs, const PDFSplitConfig& config,
                          OperationContext& context) const override;
};

}  // namespace quirn
