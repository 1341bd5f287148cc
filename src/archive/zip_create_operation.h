// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// One ZIP archive of all inputs, plain or encrypted with a password.

#pragma once

#include <string>

#include "core/operation.h"

namespace quirn {

class ZipCreateOperation final : public QuirnOperation {
 public:
  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OperationResult run(std::span<const InputFile> inputs, OperationContext& context) const override;
};

struct EncryptArchiveConfig : OperationConfig {
  std::string password;

  static Panel panel();
};

class EncryptArchiveOperation final : public ConfigurableOperation<EncryptArchiveConfig> {
 public:
  static const OperationInfo& info();
  static const AcceptedInputs& accepts();

 protected:
  OperationResult runWith(std::span<const InputFile> inputs, const EncryptArchiveConfig& config,
                          OperationContext& context) const override;
};

}  // namespace quirn
