// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/local_folder.h"

#include <utility>

#include "core/operation_error.h"
#include "platform/file_status.h"

namespace quirn {

void LocalFolder::endFile() {
  const platform::FileDescriptor file = std::exchange(file_, platform::FileDescriptor());
  if (file && modified_) platform::setModified(file.number(), *modified_);
}

void LocalFolder::throwFor(std::string_view name, const std::system_error& error) const {
  if (error.code() == std::errc::cross_device_link) throw EntryOutside(std::string(name));
  throw OperationError::writeFailed(url_ / name, error.what());
}

void LocalFolder::makeFolder(std::string_view name) {
  endFile();
  try {
    tree_.makeFolder(name);
  } catch (const std::system_error& error) {
    if (error.code() == std::errc::cross_device_link) throwFor(name, error);
  }
}

int LocalFolder::begin(std::string_view name, Date modified) {
  endFile();
  try {
    file_ = tree_.createFile(name);
  } catch (const std::system_error& error) {
    throwFor(name, error);
  }
  name_ = name;
  modified_ = modified;
  return file_.number();
}

void LocalFolder::write(std::string_view name, std::span<const std::byte> bytes, Date modified) {
  const int file = begin(name, modified);
  try {
    platform::writeAll(file, bytes);
  } catch (const std::system_error& error) {
    abandonFile();
    throwFor(name, error);
  }
  endFile();
}

void LocalFolder::abandonFile() {
  if (!file_) return;
  file_ = platform::FileDescriptor();
  tree_.removeFile(name_);
}

bool LocalFolder::link(std::string_view name, std::string_view target) {
  endFile();
  try {
    tree_.makeLink(name, std::string(target));
    return true;
  } catch (const std::system_error& error) {
    if (error.code() == std::errc::cross_device_link) throwFor(name, error);
    return false;
  }
}

OutputFile LocalFolder::publish(OutputRole role) {
  endFile();
  return publish_(tree_, role);
}

}  // namespace quirn
