// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/staged_file.h"

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <map>

#include "platform/hidden_name.h"

namespace quirn::platform {
namespace {

constexpr mode_t outputMode = 0666;  // less the umask

// Below this many files, waiting for each is faster than waiting for whatever else their disk has
// to write.
constexpr std::size_t fewFiles = 16;

std::error_code flushDescriptor(int descriptor) {
  return ::fsync(descriptor) == 0 ? std::error_code() : std::error_code(errno, std::generic_category());
}

bool lacksUnnamedFiles(int error) {
  // EISDIR is what file systems and kernels answer that don't know the flag.
  return error == EOPNOTSUPP || error == EISDIR || error == EINVAL || error == ENOENT;
}

// An unnamed file gets its name by way of its entry there; a bare chroot may be without it.
bool canNameUnnamedFiles() {
  static const bool canName = ::access("/proc/self/fd", X_OK) == 0;
  return canName;
}

// A file, or a folder with all that is in it.
void removeIfAbandoned(const OutputFolder& folder, const char* name) {
  struct stat status{};
  const bool isKnown = ::fstatat(folder.descriptor(), name, &status, AT_SYMLINK_NOFOLLOW) == 0 &&
                       (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode));
  if (!isKnown) return;
  const FileDescriptor found(::openat(folder.descriptor(), name, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  std::error_code ignored;  // the next sweep tries again
  if (found && lock(found)) std::filesystem::remove_all(folder.path() / name, ignored);
}

bool linkUnnamed(int descriptor, int folder, const char* name) {
  const std::string source = "/proc/self/fd/" + std::to_string(descriptor);
  if (::linkat(AT_FDCWD, source.c_str(), folder, name, AT_SYMLINK_FOLLOW) == 0) return true;
  if (errno == EEXIST) return false;
  throwErrno("linkat");
}

}  // namespace

OutputFolder::OutputFolder(std::filesystem::path path) : path_(std::move(path)) {
  if (!std::filesystem::is_directory(path_)) std::filesystem::create_directories(path_);
  descriptor_ = FileDescriptor(::open(path_.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!descriptor_) throwErrno("open folder");
}

void OutputFolder::flush() const {
  // Some file systems can't flush a folder and say EINVAL; their names are written with the file.
  const std::error_code error = flushDescriptor(descriptor());
  if (error && error.value() != EINVAL) throw std::system_error(error, "fsync folder");
}

void OutputFolder::sweepLeftovers() const {
  // Opened anew, since a listing moves the position of its descriptor and closes it.
  const std::unique_ptr<DIR, int (*)(DIR*)> listing(::opendir(path_.c_str()), &::closedir);
  if (!listing) return;
  while (const dirent* entry = ::readdir(listing.get())) {
    if (isHiddenName(entry->d_name)) removeIfAbandoned(*this, entry->d_name);
  }
}

StagedFile::StagedFile(std::shared_ptr<const OutputFolder> folder, FileDescriptor descriptor, std::string hiddenName)
    : folder_(std::move(folder)), descriptor_(std::move(descriptor)), hiddenName_(std::move(hiddenName)) {}

StagedFile StagedFile::create(std::shared_ptr<const OutputFolder> folder, Staging staging) {
  constexpr int flags = O_WRONLY | O_CLOEXEC;
  if (staging == Staging::unnamedWherePossible && canNameUnnamedFiles()) {
    FileDescriptor unnamed(::openat(folder->descriptor(), ".", O_TMPFILE | flags, outputMode));
    if (unnamed) return {std::move(folder), std::move(unnamed), {}};
    if (!lacksUnnamedFiles(errno)) throwErrno("open unnamed file");
  }
  for (;;) {
    std::string name = hiddenName();
    FileDescriptor hidden(::openat(folder->descriptor(), name.c_str(), O_CREAT | O_EXCL | flags, outputMode));
    if (!hidden) throwErrno("open hidden file");
    // A file system without locks is one whose leftovers are taken for abandoned only by the next
    // run.
    lock(hidden);
    if (isStillNamed(folder->descriptor(), name, hidden)) {
      return {std::move(folder), std::move(hidden), std::move(name)};
    }
  }
}

StagedFile::~StagedFile() {
  if (folder_ && !hiddenName_.empty()) ::unlinkat(folder_->descriptor(), hiddenName_.c_str(), 0);
}

std::error_code StagedFile::flush() const {
  return flushDescriptor(descriptor());
}

bool StagedFile::publishAs(const std::string& name) {
  if (hiddenName_.empty()) return linkUnnamed(descriptor(), folder_->descriptor(), name.c_str());
  if (!renameWithoutReplacing(folder_->descriptor(), hiddenName_, name)) return false;
  hiddenName_.clear();
  return true;
}

std::vector<std::error_code> flushAll(std::span<const StagedFile* const> files) {
  std::map<dev_t, bool> wholeDeviceFlushed;
  std::vector<std::error_code> errors;
  errors.reserve(files.size());
  for (const StagedFile* file : files) {
    struct stat status{};
    const bool many = files.size() > fewFiles && ::fstat(file->descriptor(), &status) == 0;
    if (many && !wholeDeviceFlushed.contains(status.st_dev)) {
      wholeDeviceFlushed[status.st_dev] = ::syncfs(file->descriptor()) == 0;
    }
    // A failed flush of the device doesn't tell whose data was lost; the files tell, one by one.
    errors.push_back(many && wholeDeviceFlushed[status.st_dev] ? std::error_code() : file->flush());
  }
  return errors;
}

}  // namespace quirn::platform
