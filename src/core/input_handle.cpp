// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/input_handle.h"

#include <array>
#include <system_error>

#include "core/operation_error.h"

namespace quirn {

InputHandle::InputHandle(platform::ReadableFile file, std::filesystem::path url)
    : file_(std::move(file)), url_(std::move(url)) {}

std::size_t InputHandle::read(std::span<std::byte> bytes) {
  try {
    return file_.read(bytes);
  } catch (const std::system_error& error) {
    throw OperationError::readFailed(url_, std::string("Read failed partway through the file. ") + error.what());
  }
}

std::string InputHandle::readAll(std::int64_t mostBytes) {
  std::string content;
  std::array<std::byte, 65536> chunk{};
  while (const std::size_t count = read(chunk)) {
    content.append(reinterpret_cast<const char*>(chunk.data()), count);
    if (static_cast<std::int64_t>(content.size()) > mostBytes) {
      throw OperationError::unsupportedInput(url_.filename().string() + " is too large to be read as a whole.");
    }
  }
  return content;
}

}  // namespace quirn
