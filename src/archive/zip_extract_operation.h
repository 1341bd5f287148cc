// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Extracts each ZIP archive into a folder of its own.

#pragma once

#include <array>
#include <string>

#include "core/budgets.h"
#include "core/operation.h"

namespace quirn {

struct ZipExtractConfig : OperationConfig {
  std::string password;

  static Panel panel();
};

class ZipExtractOperation final : public ConfigurablePerFileOperation<ZipExtractConfig> {
 public:
  static constexpr std::array budgets{Budget::entries};

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OutputFile processFileConfigured(const InputFile& input, const ZipExtractConfig& config,
                                   OperationContext& context) const override;
};

}  // namespace quirn
