// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// One TAR archive of all inputs, compressed with gzip if that is wanted.

#pragma once

#include "core/operation.h"

namespace quirn {

struct TarCreateConfig : OperationConfig {
  bool gzip = false;

  static Panel panel();
};

class TarCreateOperation final : public ConfigurableOperation<TarCreateConfig> {
 public:
  static const OperationInfo& info();
  static const AcceptedInputs& accepts();

 protected:
  OperationResult runWith(std::span<const InputFile> inputs, const TarCreateConfig& config,
                          OperationContext& context) const override;
};

}  // namespace quirn
