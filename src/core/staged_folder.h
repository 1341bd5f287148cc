// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// An output that is a folder, in the making. Nobody sees it before publish(); dropped before that, it was never there.
//
// Names of what goes into it are relative, with "/", and may come from a stranger: the kernel keeps them inside the
// folder, also where links lie in it already. Missing folders on the way are made; an empty part and "." stand for
// nothing.
//
// Calls may return before the work is done. What went wrong is then thrown by a later call, at the latest by settle(),
// and from the first fault on nothing more is made until it was thrown.
//
// Used by one thread at a time.

#pragma once

#include <chrono>
#include <cstddef>
#include <exception>
#include <filesystem>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "core/operation_result.h"

namespace quirn {

// A name that leads out of the folder.
class EntryOutside final : public std::exception {
 public:
  explicit EntryOutside(std::string name) : name_(std::move(name)) {}
  const std::string& name() const { return name_; }
  const char* what() const noexcept override { return "a name leads out of its folder"; }

 private:
  std::string name_;
};

class StagedFolder {
 public:
  using Date = std::optional<std::chrono::sys_seconds>;

  virtual ~StagedFolder() = default;

  // The name that is kept for it.
  virtual const std::filesystem::path& url() const = 0;

  // A folder that can't be made is none, without an error. Throws EntryOutside.
  virtual void makeFolder(std::string_view name) = 0;

  // Begins a file, in the place of a file or link that has the name already, and gives the descriptor to write it to.
  // It belongs to this object, until the next call; the file has its date then. Throws EntryOutside and writeFailed.
  virtual int begin(std::string_view name, Date modified) = 0;

  // Takes back the file that begin() gave last: it is not whole.
  virtual void abandonFile() = 0;

  // A whole file. Throws EntryOutside and writeFailed.
  virtual void write(std::string_view name, std::span<const std::byte> bytes, Date modified) = 0;

  // A symbolic link, in the place of whatever has the name already. Where it leads is the caller's to judge. False if
  // it can't be made. Throws EntryOutside.
  virtual bool link(std::string_view name, std::string_view target) = 0;

  // Waits until all of it is made. Throws EntryOutside and writeFailed.
  virtual void settle() = 0;

  // The last call on this object: what was made so far stays, also after a fault. Throws writeFailed.
  virtual OutputFile publish(OutputRole role) = 0;
};

}  // namespace quirn
