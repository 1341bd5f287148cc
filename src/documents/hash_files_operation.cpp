// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/hash_files_operation.h"

#include <fmt/format.h>

#include "documents/checksum_list.h"

namespace quirn {

Panel HashFilesConfig::panel() {
  return {choice<&HashFilesConfig::algorithm>("Algorithm",
                                              {{HashAlgorithm::sha256, std::string(label(HashAlgorithm::sha256))},
                                               {HashAlgorithm::sha1, std::string(label(HashAlgorithm::sha1))},
                                               {HashAlgorithm::sha512, std::string(label(HashAlgorithm::sha512))},
                                               {HashAlgorithm::md5, std::string(label(HashAlgorithm::md5))}}),
          Note{"Writes a sidecar “.txt” checksum file next to each input."}};
}

const OperationInfo& HashFilesOperation::info() {
  static const OperationInfo info{
      .operationID = "text.hash-files",
      .displayName = "Hash Files",
      .iconName = "number.square",
      .category = OperationCategory::text,
      .aliases = {"hash", "checksum", "sha256", "sha1", "sha512", "md5", "digest", "fingerprint"},
      .about = "Writes the checksum of each file into a small text file.",
  };
  return info;
}

const AcceptedInputs& HashFilesOperation::accepts() {
  static const AcceptedInputs accepts;
  return accepts;
}

OutputFile HashFilesOperation::processFileConfigured(const InputFile& input, const HashFilesConfig& config,
                                                     OperationContext& context) const {
  const std::string file = input.fileName();
  context.setStatus(fmt::format("Hashing {}…", file));
  const std::string digest = digestOf(context.open(input), config.algorithm, context.stopToken());
  OutputFile output = writeTextOutput(context, input, "checksums", "txt", checksumLine(digest, file),
                                      "Couldn't write the checksum file.");
  context.setStatus(fmt::format("{}: {}", label(config.algorithm), file));
  return output;
}

}  // namespace quirn
