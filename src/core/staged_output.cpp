// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/staged_output.h"

#include <system_error>

#include "core/operation_error.h"
#include "platform/file_descriptor.h"

namespace quirn {

void StagedOutput::write(std::span<const std::byte> bytes) {
  append(descriptor(), url(), bytes);
}

void StagedOutput::write(std::string_view text) {
  write(std::as_bytes(std::span(text)));
}

void StagedOutput::append(int descriptor, const std::filesystem::path& url, std::span<const std::byte> bytes) {
  try {
    platform::writeAll(descriptor, bytes);
  } catch (const std::system_error& error) {
    throw OperationError::writeFailed(url, error.what());
  }
}

}  // namespace quirn
