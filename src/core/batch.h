// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The driver that spreads a list of files over the processors and turns the errors of single files
// into failures of those files.

#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <span>

#include "core/input_file.h"
#include "core/operation_context.h"
#include "core/operation_result.h"

namespace quirn {

using FileWorker = std::function<OutputFile(const InputFile&)>;

// Runs `worker` once for each file, in order, on as many threads of the shared pool at a time as
// there are processors. Blocks until all have ended. Outputs and failures stand in order of
// finishing; progress counts finished files.
//
// Throws CancellationError when the context was asked to stop, or what a cancelled worker threw;
// and when no file gave an output, the first OperationError of a worker, else engineFailed with the
// stage "batch". Outputs finished before that stay.
OperationResult runBatch(std::span<const InputFile> inputs, OperationContext& context, const FileWorker& worker);

// How many files a worker is handed at once: as many as are processed in so short a time, by what those before them
// took, and none that waits behind a large one.
struct Grouping {
  std::int64_t mostFiles = 16;
  std::int64_t mostBytes = 1 << 20;
  std::chrono::nanoseconds time = std::chrono::milliseconds(3);
};

// Gives the output of a file, or throws why there is none.
using FileEnding = std::function<OutputFile()>;
// Processes some files that follow one another, and reports the ending of each in turn.
using GroupWorker =
    std::function<void(std::span<const InputFile>, const std::function<void(const FileEnding&)>& report)>;

// The same for a worker that is quicker with several small files than with each by itself.
OperationResult runBatch(std::span<const InputFile> inputs, OperationContext& context, const GroupWorker& worker,
                         const Grouping& grouping);

}  // namespace quirn
