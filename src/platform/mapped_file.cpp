// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/mapped_file.h"

#include <sys/mman.h>
#include <unistd.h>

#include <utility>

#include "platform/file_descriptor.h"
#include "platform/file_status.h"

namespace quirn::platform {

MappedFile::MappedFile(int descriptor) {
  const auto size = static_cast<std::size_t>(sizeOfOpen(descriptor));
  if (size == 0) return;
  void* const place = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, descriptor, 0);
  if (place == MAP_FAILED) throwErrno("mmap");
  bytes_ = {static_cast<std::byte*>(place), size};
}

MappedFile::MappedFile(MappedFile&& other) noexcept : bytes_(std::exchange(other.bytes_, {})) {}

MappedFile::~MappedFile() {
  if (!bytes_.empty()) ::munmap(bytes_.data(), bytes_.size());
}

void MappedFile::release(std::size_t size) const {
  const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
  const std::size_t whole = size / page * page;
  if (whole > 0) ::madvise(bytes_.data(), whole, MADV_DONTNEED);
}

}  // namespace quirn::platform
