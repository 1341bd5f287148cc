// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a run carries: its progress, its status line, and the capabilities through which an
// operation reaches files. Operations open nothing by path, so that one and the same operation runs
// in this process, in a test that grants what it likes, or shut into a process that can reach
// nothing else.
//
// One context serves one run. All members may be called from any thread.

#pragma once

#include <cstdint>
#include <filesystem>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <string_view>
#include <vector>

#include "core/input_file.h"
#include "core/input_handle.h"
#include "core/operation_result.h"
#include "core/output_name.h"
#include "core/progress.h"
#include "core/staged_folder.h"
#include "core/staged_output.h"
#include "platform/uuid.h"

namespace quirn {

// The size of the reads that operations stream files with.
inline constexpr std::size_t chunkSize = 1 << 20;

class OperationContext {
 public:
  // `outputDirectory` is the folder that the person chose; without one, outputs go beside their
  // input.
  OperationContext(std::int64_t unitCount, std::optional<std::filesystem::path> outputDirectory);
  virtual ~OperationContext() = default;
  OperationContext(const OperationContext&) = delete;
  OperationContext& operator=(const OperationContext&) = delete;

  Progress& progress() { return progress_; }
  const std::optional<std::filesystem::path>& outputDirectory() const { return outputDirectory_; }
  const platform::Uuid& runID() const { return runID_; }

  // A short text for the person, ending in "…" while work goes on.
  void setStatus(std::string text);
  std::string currentStatus() const;

  // Requested when the run is to stop. Long work looks at it between files, chunks, pages and
  // frames.
  std::stop_token stopToken() const { return stopSource_.get_token(); }
  void requestStop() { stopSource_.request_stop(); }
  // Throws CancellationError once a stop was requested.
  void checkCancellation() const;

  // Opens an input of this run. Throws readFailed; a pipe, socket or device is refused unopened.
  virtual InputHandle open(const InputFile& input) = 0;

  // Opens a file that is named, relative to it, in `input`. Throws readFailed for one that is there
  // and can't be read.
  virtual Neighbour openNeighbour(const InputFile& input, const std::filesystem::path& name) = 0;

  // The regular files beneath a folder input, at any depth, in order of path; links are not
  // followed. Throws readFailed.
  virtual std::vector<InputFile> enumerate(const InputFile& folder) = 0;

  // Begins an output, in the chosen folder or else in that of `beside`. Throws writeFailed.
  virtual std::unique_ptr<StagedOutput> stage(const InputFile& beside, const OutputNaming& naming) = 0;

  // The same, named "{stem of input} ({suffix}).{extension}".
  std::unique_ptr<StagedOutput> stage(const InputFile& input, std::string_view suffix, std::string_view extension);

  // Begins an output that is a folder, in the same place. Throws writeFailed.
  virtual std::unique_ptr<StagedFolder> stageFolder(const InputFile& beside, const OutputNaming& naming) = 0;

  // Brings everything that was handed over so far to the disk and gives it its name. For the driver
  // of a run.
  virtual void publishStaged() = 0;

  // The form in which an output that publishStaged() dealt with is now there. Throws writeFailed if
  // it is not.
  virtual OutputFile published(OutputFile output) = 0;

  // Makes the names of the run's outputs last beyond a power cut. The last call of a run. Throws
  // writeFailed.
  virtual void finish() = 0;

 private:
  Progress progress_;
  std::optional<std::filesystem::path> outputDirectory_;
  platform::Uuid runID_ = platform::Uuid::random();
  std::stop_source stopSource_;
  mutable std::mutex statusLock_;  // a leaf: nothing is called under it
  std::string status_;             // guarded by statusLock_
};

// Writes a whole small output in one step. `failure` is the detail of the writeFailed that is
// thrown when that fails.
OutputFile writeTextOutput(OperationContext& context, const InputFile& input, std::string_view suffix,
                           std::string_view extension, std::string_view text, std::string_view failure);

}  // namespace quirn
