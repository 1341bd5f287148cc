// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Changes a document's title, author, subject and keywords.

#pragma once

#include <array>
#include <string>

#include "core/budgets.h"
#include "core/operation.h"

namespace quirn {

struct PDFMetadataConfig : OperationConfig {
  std::string title;
  std::string author;
  std::string subject;
  std::string keywords;  // separated by commas

  static Panel panel();
};

class PDFMetadataOperation final : public ConfigurableOperation<PDFMetadataConfig> {
 public:
  static constexpr std::string_view module = "pdf";
  static constexpr std::array budgets{Budget::pages, Budget::nesting};

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  // The document's own attributes.
  static PDFMetadataConfig configurationFor(std::span<const InputFile> inputs, OperationContext& context);

 protected:
  OperationResult runWith(std::span<const InputFile> inputs, const PDFMetadataConfig& config,
                          OperationContext& context) const override;
};

}  // namespace quirn
