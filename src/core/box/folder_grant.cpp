// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/box/folder_grant.h"

#include <utility>

#include "core/box/protocol.h"
#include "core/operation_error.h"
#include "platform/file_status.h"

namespace quirn::box {

template <class Step>
void FolderGrant::keepingFault(Step step) {
  endFile();
  ++entryCount_;
  if (fault_) return;
  try {
    step();
  } catch (const OperationError&) {
    fault_ = std::current_exception();
  } catch (const EntryOutside&) {
    fault_ = std::current_exception();
  }
}

void FolderGrant::endFile() {
  if (const int file = std::exchange(file_, -1); file >= 0) bytes_ += platform::sizeOfOpen(file);
}

std::int64_t FolderGrant::bytes() const {
  return bytes_ + (file_ < 0 ? 0 : platform::sizeOfOpen(file_));
}

void FolderGrant::makeFolder(MessageReader& message) {
  const std::string_view name = message.text();
  keepingFault([&] { folder_->makeFolder(name); });
}

void FolderGrant::writeFile(MessageReader& message) {
  const std::string_view name = message.text();
  const StagedFolder::Date modified = readDate(message);
  const std::string_view content = message.text();
  bytes_ += std::ssize(content);
  keepingFault([&] { folder_->write(name, std::as_bytes(std::span(content)), modified); });
}

void FolderGrant::abandonFile() {
  endFile();
  folder_->abandonFile();
}

int FolderGrant::beginFile(MessageReader& message) {
  const std::string_view name = message.text();
  const StagedFolder::Date modified = readDate(message);
  settle();
  ++entryCount_;
  return file_ = folder_->begin(name, modified);
}

bool FolderGrant::link(MessageReader& message) {
  const std::string_view name = message.text();
  const std::string_view target = message.text();
  settle();
  ++entryCount_;
  return folder_->link(name, target);
}

void FolderGrant::settle() {
  endFile();
  if (fault_) std::rethrow_exception(std::exchange(fault_, nullptr));
  folder_->settle();
}

OutputFile FolderGrant::publish(OutputRole role) {
  endFile();
  return folder_->publish(role);
}

}  // namespace quirn::box
