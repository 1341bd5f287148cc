// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The program's end of a folder output that a worker fills. The worker may be in a stranger's hands: the folder keeps
// every name inside, and what goes in is counted.

#pragma once

#include <cstdint>
#include <exception>
#include <memory>
#include <string>

#include "core/box/message.h"
#include "core/staged_folder.h"

namespace quirn::box {

class FolderGrant {
 public:
  explicit FolderGrant(std::unique_ptr<StagedFolder> folder) : folder_(std::move(folder)) {}

  const std::filesystem::path& url() const { return folder_->url(); }

  // Notes. Their faults are kept for the next question; until then nothing more is made.
  void makeFolder(MessageReader& message);
  void writeFile(MessageReader& message);
  void abandonFile();

  // Questions. They throw the fault that is kept, or their own.
  int beginFile(MessageReader& message);
  bool link(MessageReader& message);
  void settle();

  // The last call.
  OutputFile publish(OutputRole role);

  // Of all files so far.
  std::int64_t bytes() const;
  // Whatever was asked to be made.
  std::int64_t entryCount() const { return entryCount_; }

 private:
  template <class Step>
  void keepingFault(Step step);
  void endFile();

  std::unique_ptr<StagedFolder> folder_;
  std::exception_ptr fault_;
  int file_ = -1;  // the one that the worker writes to; belongs to folder_
  std::int64_t bytes_ = 0;
  std::int64_t entryCount_ = 0;
};

}  // namespace quirn::box
