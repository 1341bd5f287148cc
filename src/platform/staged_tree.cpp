// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/staged_tree.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <ranges>
#include <utility>

#include "platform/beneath.h"
#include "platform/hidden_name.h"

namespace quirn::platform {
namespace {

constexpr mode_t fileMode = 0666;    // less the umask
constexpr mode_t folderMode = 0777;  // less the umask
constexpr std::size_t deepest = 256;

[[noreturn]] void throwError(int error, const char* what) {
  throw std::system_error(error, std::generic_category(), what);
}

// The parts of a name that mean something. One with ".." is taken for leading out wherever it leads.
std::vector<std::string> partsOf(std::string_view name) {
  if (name.starts_with('/') || name.find('\0') != std::string_view::npos) throwError(EXDEV, "name");
  std::vector<std::string> parts;
  for (const auto part : std::views::split(name, '/')) {
    const std::string_view text(part.begin(), part.end());
    if (text == "..") throwError(EXDEV, "name");
    if (!text.empty() && text != ".") parts.emplace_back(text);
  }
  if (parts.size() > deepest) throwError(ENAMETOOLONG, "name");
  return parts;
}

std::string joined(const std::vector<std::string>& parts) {
  std::string name;
  for (const std::string& part : parts) name += (name.empty() ? "" : "/") + part;
  return name;
}

void removeTree(const OutputFolder& parent, const std::string& name) {
  std::error_code ignored;  // a later sweep tries again
  std::filesystem::remove_all(parent.path() / name, ignored);
}

}  // namespace

StagedTree::StagedTree(std::shared_ptr<const OutputFolder> parent, FileDescriptor descriptor, std::string hiddenName)
    : parent_(std::move(parent)), descriptor_(std::move(descriptor)), hiddenName_(std::move(hiddenName)) {}

StagedTree StagedTree::create(std::shared_ptr<const OutputFolder> parent) {
  for (;;) {
    std::string name = hiddenName();
    if (::mkdirat(parent->descriptor(), name.c_str(), folderMode) != 0) throwErrno("mkdir");
    FileDescriptor folder(
        ::openat(parent->descriptor(), name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
    if (!folder && errno != ENOENT) throwErrno("open folder");
    if (folder) lock(folder);
    if (folder && isStillNamed(parent->descriptor(), name, folder))
      return {std::move(parent), std::move(folder), std::move(name)};
  }
}

StagedTree::~StagedTree() {
  if (parent_ && !hiddenName_.empty()) removeTree(*parent_, hiddenName_);
}

FileDescriptor StagedTree::openOrMake(const std::string& name) const {
  constexpr int flags = O_PATH | O_DIRECTORY;
  try {
    return openBeneath(descriptor_.number(), name, flags);
  } catch (const std::system_error& error) {
    if (error.code() != std::errc::no_such_file_or_directory) throw;
  }
  const std::size_t slash = name.rfind('/');
  const FileDescriptor above =
      slash == std::string::npos ? openBeneath(descriptor_.number(), ".", flags) : openOrMake(name.substr(0, slash));
  const std::string leaf = name.substr(slash == std::string::npos ? 0 : slash + 1);
  if (::mkdirat(above.number(), leaf.c_str(), folderMode) != 0) throwErrno("mkdir");
  return openBeneath(descriptor_.number(), name, flags);
}

StagedTree::Place StagedTree::placeOf(std::string_view name) {
  std::vector<std::string> parts = partsOf(name);
  if (parts.empty()) throwError(EISDIR, "name");
  std::string leaf = std::move(parts.back());
  parts.pop_back();
  if (parts.empty()) return {descriptor_.number(), std::move(leaf)};
  std::string folder = joined(parts);
  if (!openFolder_ || folder != openName_) {
    openFolder_ = openOrMake(folder);
    openName_ = std::move(folder);
  }
  return {openFolder_.number(), std::move(leaf)};
}

void StagedTree::makeFolder(std::string_view name) {
  const std::string whole = joined(partsOf(name));
  if (!whole.empty()) openOrMake(whole);
}

FileDescriptor StagedTree::createFile(std::string_view name) {
  const Place place = placeOf(name);
  const auto create = [&] {
    return FileDescriptor(
        ::openat(place.folder, place.leaf.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, fileMode));
  };
  FileDescriptor file = create();
  if (!file && errno == EEXIST) {
    if (::unlinkat(place.folder, place.leaf.c_str(), 0) != 0) throwErrno("unlink");
    file = create();
  }
  if (!file) throwErrno("create file");
  return file;
}

void StagedTree::removeFile(std::string_view name) {
  const Place place = placeOf(name);
  ::unlinkat(place.folder, place.leaf.c_str(), 0);
}

void StagedTree::makeLink(std::string_view name, const std::string& target) {
  const Place place = placeOf(name);
  const auto make = [&] { return ::symlinkat(target.c_str(), place.folder, place.leaf.c_str()) == 0; };
  bool made = make();
  if (!made && errno == EEXIST) {
    // What lies in the tree came from its maker; the path is one that the kernel kept inside.
    const std::string folder = "/proc/self/fd/" + std::to_string(place.folder) + "/" + place.leaf;
    std::error_code failed;
    std::filesystem::remove_all(folder, failed);
    made = make();
  }
  // The name may have led to a folder through a link that is another now.
  openFolder_ = FileDescriptor();
  if (!made) throwErrno("symlink");
}

std::error_code StagedTree::flush() const {
  return ::syncfs(descriptor_.number()) == 0 ? std::error_code() : std::error_code(errno, std::generic_category());
}

bool StagedTree::publishAs(const std::string& name) {
  if (!renameWithoutReplacing(parent_->descriptor(), hiddenName_, name)) return false;
  hiddenName_.clear();
  return true;
}

}  // namespace quirn::platform
