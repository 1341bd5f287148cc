// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/readable_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <iterator>
#include <system_error>

#include "platform/beneath.h"

namespace quirn::platform {
namespace {

std::atomic<std::int64_t> readCount = 0;

[[noreturn]] void throwShortened() {
  throw std::system_error(EIO, std::generic_category(), "the file became shorter while it was read");
}

// Calls `read` until no signal interrupts it.
template <class Read>
std::size_t readOnce(const Read& read) {
  ssize_t count = 0;
  do {
    count = read();
  } while (count < 0 && errno == EINTR);
  if (count < 0) throwErrno("read");
  readCount.fetch_add(1, std::memory_order_relaxed);
  return static_cast<std::size_t>(count);
}

// O_NONBLOCK: should a pipe take the file's place between the look and the opening, nothing hangs.
constexpr int openFlags = O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;

[[noreturn]] void refuse() {
  errno = ENOTSUP;
  throwErrno("not a regular file");
}

}  // namespace

ReadableFile::ReadableFile(FileDescriptor descriptor) : descriptor_(std::move(descriptor)) {
  struct stat status{};
  if (::fstat(descriptor_.number(), &status) != 0) throwErrno("fstat");
  if (!S_ISREG(status.st_mode)) refuse();
  size_ = status.st_size;
}

ReadableFile ReadableFile::open(const std::filesystem::path& path) {
  struct stat status{};
  if (::stat(path.c_str(), &status) != 0) throwErrno("stat");
  if (!S_ISREG(status.st_mode)) refuse();
  FileDescriptor descriptor(::open(path.c_str(), openFlags));
  if (!descriptor) throwErrno("open");
  return ReadableFile(std::move(descriptor));
}

ReadableFile ReadableFile::openBeneath(const std::filesystem::path& folder, const std::filesystem::path& name) {
  const FileDescriptor root(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (!root) throwErrno("open folder");
  // A look that opens nothing comes first, as in open().
  const FileDescriptor seen = platform::openBeneath(root.number(), name, O_PATH);
  struct stat status{};
  if (::fstat(seen.number(), &status) != 0) throwErrno("fstat");
  if (!S_ISREG(status.st_mode)) refuse();
  return ReadableFile(platform::openBeneath(root.number(), name, openFlags));
}

std::size_t ReadableFile::read(std::span<std::byte> bytes) {
  const std::size_t count = readOnce([&] { return ::read(descriptor_.number(), bytes.data(), bytes.size()); });
  if (count == 0 && !bytes.empty() && position_ < size_) throwShortened();
  position_ += static_cast<std::int64_t>(count);
  return count;
}

std::size_t ReadableFile::readAt(std::int64_t offset, std::span<std::byte> bytes) const {
  if (offset >= size_) return 0;
  bytes = bytes.first(static_cast<std::size_t>(std::min<std::int64_t>(std::ssize(bytes), size_ - offset)));
  std::size_t done = 0;
  while (done < bytes.size()) {
    const std::span<std::byte> rest = bytes.subspan(done);
    const std::int64_t position = offset + static_cast<std::int64_t>(done);
    const std::size_t count =
        readOnce([&] { return ::pread(descriptor_.number(), rest.data(), rest.size(), position); });
    if (count == 0) throwShortened();
    done += count;
  }
  return done;
}

void ReadableFile::countRead() {
  readCount.fetch_add(1, std::memory_order_relaxed);
}

std::int64_t ReadableFile::readsOfThisProcess() {
  return readCount.load(std::memory_order_relaxed);
}

}  // namespace quirn::platform
