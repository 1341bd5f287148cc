// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/zip_create_operation.h"

#include "archive/archive_items.h"
#include "archive/zip_creation.h"

namespace quirn {
namespace {

OperationResult zipped(std::span<const InputFile> inputs, std::string_view suffix, const std::string& password,
                       OperationContext& context) {
  context.checkCancellation();
  const auto output = context.stage(inputs.front(), {archiveStemOf(inputs), std::string(suffix), "zip"});
  ZipCreation creation(context, *output, password);
  for (const ArchiveItem& item : archiveItemsOf(inputs, context)) creation.add(item);
  const std::size_t count = creation.finish();
  if (count == 0) throw OperationError::unsupportedInput("Nothing to compress.");
  const OutputFile archive = output->publish(OutputRole::primary);
  return {.outputs = {archive}, .summary = createdSummary(archive, count), .failures = {}};
}

}  // namespace

const OperationInfo& ZipCreateOperation::info() {
  static const OperationInfo info{
      .operationID = "archive.zip-create",
      .displayName = "Create ZIP",
      .iconName = "doc.zipper",
      .category = OperationCategory::archive,
      .aliases = {"zip", "compress", "create zip", "make archive"},
      .about = "Packs files and folders into one ZIP archive.",
  };
  return info;
}

const AcceptedInputs& ZipCreateOperation::accepts() {
  static const AcceptedInputs accepts{.folders = AcceptedInputs::Folders::allowed};
  return accepts;
}

OperationResult ZipCreateOperation::run(std::span<const InputFile> inputs, OperationContext& context) const {
  return zipped(inputs, "archive", {}, context);
}

Panel EncryptArchiveConfig::panel() {
  return {newSecret<&EncryptArchiveConfig::password>("Password"),
          Note{"Encrypts with AES-256. Names of files stay readable, and without the password nobody can open them."}};
}

const OperationInfo& EncryptArchiveOperation::info() {
  static const OperationInfo info{
      .operationID = "archive.encrypt",
      .displayName = "Password-Protect",
      .iconName = "lock",
      .category = OperationCategory::archive,
      .aliases = {"encrypt", "password protect", "password zip", "aes zip", "secure archive", "lock files"},
      .about = "Packs files and folders into one ZIP archive that only a password opens.",
  };
  return info;
}

const AcceptedInputs& EncryptArchiveOperation::accepts() {
  return ZipCreateOperation::accepts();
}

OperationResult EncryptArchiveOperation::runWith(std::span<const InputFile> inputs, const EncryptArchiveConfig& config,
                                                 OperationContext& context) const {
  if (config.password.empty()) throw OperationError::unsupportedInput("Enter a password first.");
  return zipped(inputs, "encrypted", config.password, context);
}

}  // namespace quirn
