// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/input_handle.h"

#include <span>
#include <system_error>
#include <utility>

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

platform::MappedFile InputHandle::map() const {
  try {
    return platform::MappedFile(descriptor());
  } catch (const std::system_error& error) {
    throw OperationError::readFailed(url_, error.what());
  }
}

std::string InputHandle::readAll(std::int64_t mostBytes) {
  constexpr std::size_t leastRoom = 65536;
  const auto refuse = [this] {
    throw OperationError::unsupportedInput(url_.filename().string() + " is too large to be read as a whole.");
  };
  if (size() > mostBytes) refuse();
  // Room for the size that the file says, and for the byte that shows whether it has grown since.
  std::string content(static_cast<std::size_t>(size()) + 1, '\0');
  std::size_t filled = 0;
  while (const std::size_t count = read(std::as_writable_bytes(std::span(content).subspan(filled)))) {
    filled += count;
    if (std::cmp_greater(filled, mostBytes)) refuse();
    if (filled == content.size()) content.resize(filled + filled / 2 + leastRoom);
  }
  content.resize(filled);
  return content;
}

}  // namespace quirn
