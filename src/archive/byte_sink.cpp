// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/byte_sink.h"

#include <fcntl.h>

#include <system_error>

namespace quirn {
namespace {

constexpr mode_t fileMode = 0666;  // less the umask
constexpr std::size_t keptAtMost = 256 << 10;

}  // namespace

ByteSink sinkInto(StagedOutput& output) {
  return [&output](std::span<const std::byte> bytes) { output.write(bytes); };
}

ByteSink sinkIntoFile(const std::filesystem::path& path) {
  std::error_code ignored;  // what can't be removed can't be made anew either
  std::filesystem::remove(path, ignored);
  const auto file = std::make_shared<platform::FileDescriptor>(
      ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, fileMode));
  if (!*file) return {};
  return [file](std::span<const std::byte> bytes) { platform::writeAll(file->number(), bytes); };
}

void BufferedSink::write(std::span<const std::byte> bytes) {
  if (kept_.size() + bytes.size() > keptAtMost) flush();
  if (bytes.size() > keptAtMost) {
    sink_(bytes);
    return;
  }
  platform::append(kept_, bytes);
}

void BufferedSink::flush() {
  if (!kept_.empty()) sink_(kept_);
  kept_.clear();
}

void BufferedSink::close() {
  flush();
  sink_ = nullptr;
}

}  // namespace quirn
