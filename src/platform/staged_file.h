// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A file in the making that nobody sees under its name until it is whole.
//
// Where the file system can, it has no name at all (O_TMPFILE), so that a program that is killed
// leaves nothing behind. Elsewhere it is a hidden sibling (platform/hidden_name.h);
// sweepLeftovers() removes those that no living program holds.

#pragma once

#include <cstddef>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <system_error>
#include <vector>

#include "platform/file_descriptor.h"

namespace quirn::platform {

// A folder that is being written to.
class OutputFolder {
 public:
  // Opens the folder, after making it and its parents where they are missing. Throws
  // std::system_error.
  explicit OutputFolder(std::filesystem::path path);

  const std::filesystem::path& path() const { return path_; }
  int descriptor() const { return descriptor_.number(); }

  // Makes the names in it last beyond a power cut. Throws std::system_error.
  void flush() const;

  // Removes what killed programs left here. What another program holds or owns stays, without an
  // error.
  void sweepLeftovers() const;

 private:
  std::filesystem::path path_;
  FileDescriptor descriptor_;
};

class StagedFile {
 public:
  enum class Staging { unnamedWherePossible, hiddenSibling };

  // Throws std::system_error. The folder is shared with every file staged in it.
  static StagedFile create(std::shared_ptr<const OutputFolder> folder, Staging staging = Staging::unnamedWherePossible);
  StagedFile(StagedFile&&) noexcept = default;
  StagedFile& operator=(StagedFile&&) = delete;
  // Discards the file unless it was published.
  ~StagedFile();

  // For writing to. Belongs to this object.
  int descriptor() const { return descriptor_.number(); }

  const std::shared_ptr<const OutputFolder>& folder() const { return folder_; }

  // Brings the content to the disk.
  std::error_code flush() const;

  // Gives the file its name; false, with nothing changed, if something has that name already. The
  // file is complete and flushed by then. Throws std::system_error.
  bool publishAs(const std::string& name);

 private:
  StagedFile(std::shared_ptr<const OutputFolder> folder, FileDescriptor descriptor, std::string hiddenName);

  std::shared_ptr<const OutputFolder> folder_;
  FileDescriptor descriptor_;
  std::string hiddenName_;  // empty where the file has no name
};

// Brings many files to the disk: a few one by one, many by flushing their file systems, which costs
// one wait for the disk instead of one per file. Gives the error of each file, in order; none of
// them stops the others.
std::vector<std::error_code> flushAll(std::span<const StagedFile* const> files);

}  // namespace quirn::platform
