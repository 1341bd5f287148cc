// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A regular file opened for reading, and nothing else: pipes, sockets and devices are refused
// without being opened, since opening one can hang or act on hardware.

#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>

#include "platform/file_descriptor.h"

namespace quirn::platform {

class ReadableFile {
 public:
  // Links are followed. Throws std::system_error, with ENOTSUP for what is no regular file.
  static ReadableFile open(const std::filesystem::path& path);

  // Opens `name`, relative to and inside `folder`. A link may lead elsewhere inside the folder,
  // never out of it: that throws std::system_error with EXDEV, as an absolute `name` or one with
  // too many ".." does.
  static ReadableFile openBeneath(const std::filesystem::path& folder, const std::filesystem::path& name);

  // A file that was opened elsewhere, for reading. Throws std::system_error, with ENOTSUP for what
  // is no regular file.
  static ReadableFile of(FileDescriptor descriptor) { return ReadableFile(std::move(descriptor)); }

  // The next bytes of the file, at most bytes.size() of them; 0 at its end. Throws
  // std::system_error if reading fails, or with EIO if the file ends before the size that it had
  // when it was opened: a file that is cut while it is read must not pass for a short one.
  std::size_t read(std::span<std::byte> bytes);

  // The bytes at `offset`, without moving what read() gives next: all that were asked for, or as many as there are up
  // to the size. Throws as read() does.
  std::size_t readAt(std::int64_t offset, std::span<std::byte> bytes) const;

  // In bytes, when the file was opened.
  std::int64_t size() const { return size_; }

  // For libraries that read from a descriptor of their own accord. Belongs to this object.
  int descriptor() const { return descriptor_.number(); }

  // How often this process has read from files so far: a sign of life.
  static std::int64_t readsOfThisProcess();
  // Counts as one of them: for those who read through a mapping.
  static void countRead();

 private:
  explicit ReadableFile(FileDescriptor descriptor);

  FileDescriptor descriptor_;
  std::int64_t size_ = 0;
  std::int64_t position_ = 0;
};

}  // namespace quirn::platform
