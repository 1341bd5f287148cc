// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a run gives back: the files it made and the inputs it could not process.

#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include "platform/uuid.h"

namespace quirn {

enum class OutputRole {
  primary,    // the thing that was asked for
  companion,  // a further file of the same rank, such as a page of a split
  sidecar,    // a report or list beside the result
};

struct OutputFile {
  platform::Uuid id;
  std::filesystem::path url;  // absolute
  OutputRole role = OutputRole::primary;
};

struct FileFailure {
  platform::Uuid id;
  std::string fileName;  // last component of the input
  std::string message;   // one sentence for the person
};

struct OperationResult {
  std::vector<OutputFile> outputs;     // in the order in which they were finished
  std::optional<std::string> summary;  // for the closing message; without one the front end words its own
  std::vector<FileFailure> failures;
};

// "Created 2 of 7. 5 couldn’t be processed: a, b, c, +2 more." `failures` is not empty.
std::string failureSummary(std::size_t outputCount, const std::vector<FileFailure>& failures);

}  // namespace quirn
