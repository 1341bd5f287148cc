// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A folder in the making, filled under a hidden name (platform/hidden_name.h) and then renamed. The names of what goes
// into it may come from a stranger: relative, with "/"; nothing is made outside the folder (platform/beneath.h).

#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

#include "platform/file_descriptor.h"
#include "platform/staged_file.h"

namespace quirn::platform {

class StagedTree {
 public:
  // Throws std::system_error.
  static StagedTree create(std::shared_ptr<const OutputFolder> parent);
  StagedTree(StagedTree&&) noexcept = default;
  StagedTree& operator=(StagedTree&&) = delete;
  // Removes the folder with all that is in it, unless it was published.
  ~StagedTree();

  const std::shared_ptr<const OutputFolder>& parent() const { return parent_; }

  // All make the folders on the way. They throw std::system_error, with EXDEV for a name that leads out.

  // One that is there already is kept.
  void makeFolder(std::string_view name);
  // For writing to, in the place of a file or link of that name.
  FileDescriptor createFile(std::string_view name);
  // Nothing if it isn't there.
  void removeFile(std::string_view name);
  // In the place of whatever has that name.
  void makeLink(std::string_view name, const std::string& target);

  // Brings all of it to the disk.
  std::error_code flush() const;

  // Gives the folder its name; false, with nothing changed, if something has that name already. Throws
  // std::system_error.
  bool publishAs(const std::string& name);

 private:
  // A name whose last part stands in an open folder.
  struct Place {
    int folder;
    std::string leaf;
  };

  StagedTree(std::shared_ptr<const OutputFolder> parent, FileDescriptor descriptor, std::string hiddenName);

  Place placeOf(std::string_view name);
  FileDescriptor openOrMake(const std::string& name) const;

  std::shared_ptr<const OutputFolder> parent_;
  FileDescriptor descriptor_;
  std::string hiddenName_;  // empty once published

  // Most names share their folder with the one before.
  std::string openName_;
  FileDescriptor openFolder_;
};

}  // namespace quirn::platform
