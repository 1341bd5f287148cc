// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The driver that spreads a list of files over the processors and turns the errors of single files
// into failures of those files.

#pragma once

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

}  // namespace quirn
