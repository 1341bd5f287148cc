// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A file's content as memory, read when it is touched. Only for worker processes and for files that nobody else
// changes: one that is cut while it is mapped kills the process that touches what is gone.

#pragma once

#include <cstddef>
#include <span>

namespace quirn::platform {

class MappedFile {
 public:
  // All of the open file, for reading. Throws std::system_error.
  explicit MappedFile(int descriptor);
  MappedFile(MappedFile&& other) noexcept;
  MappedFile& operator=(MappedFile&&) = delete;
  ~MappedFile();

  std::span<const std::byte> bytes() const { return bytes_; }

  // Gives back the memory that the first `size` bytes take. They are read again if they are touched again.
  void release(std::size_t size) const;

 private:
  std::span<std::byte> bytes_;
};

}  // namespace quirn::platform
