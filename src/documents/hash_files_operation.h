// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Writes a checksum file beside each input, in the form that "sha256sum -c" and its siblings read.

#pragma once

#include "core/operation.h"
#include "documents/hash_algorithm.h"

namespace quirn {

struct HashFilesConfig : OperationConfig {
  HashAlgorithm algorithm = HashAlgorithm::sha256;

  static Panel panel();
};

class HashFilesOperation final : public ConfigurablePerFileOperation<HashFilesConfig> {
 public:
  static constexpr Placement placement = Placement::inProcess;

  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OutputFile processFileConfigured(const InputFile& input, const HashFilesConfig& config,
                                   OperationContext& context) const override;
};

}  // namespace quirn
