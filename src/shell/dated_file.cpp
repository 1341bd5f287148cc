// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shell/dated_file.h"

#include <fmt/format.h>

#include <ctime>
#include <memory>
#include <string>
#include <system_error>

#include "core/operation_error.h"
#include "platform/file_descriptor.h"
#include "platform/staged_file.h"

namespace quirn {
namespace fs = std::filesystem;
namespace {

std::string dateText(std::chrono::system_clock::time_point date) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(date);
  std::tm local{};
  ::localtime_r(&seconds, &local);
  return fmt::format("{:04}-{:02}-{:02} at {:02}.{:02}.{:02}", local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
                     local.tm_hour, local.tm_min, local.tm_sec);
}

std::string numbered(std::string_view stem, int number, std::string_view extension) {
  return number == 0 ? fmt::format("{}.{}", stem, extension) : fmt::format("{} ({}).{}", stem, number, extension);
}

}  // namespace

fs::path writeDatedFile(const fs::path& folder, std::string_view word, std::string_view extension,
                        std::chrono::system_clock::time_point date, std::span<const std::byte> bytes) {
  const std::string stem = fmt::format("{} {}", word, dateText(date));
  try {
    auto file = platform::StagedFile::create(std::make_shared<const platform::OutputFolder>(folder));
    platform::writeAll(file.descriptor(), bytes);
    int number = 0;
    while (!file.publishAs(numbered(stem, number, extension))) ++number;
    return folder / numbered(stem, number, extension);
  } catch (const std::system_error& error) {
    throw OperationError::writeFailed(folder / numbered(stem, 0, extension), error.what());
  }
}

}  // namespace quirn
