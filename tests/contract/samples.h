// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// One sample for every operation that runs by itself: files that it must be able to process.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quirn::tests {

struct SampleFile {
  std::string name;
  std::string content;
  bool isInput = true;  // else a file that stands beside the inputs
};

struct Sample {
  std::string_view operationID;
  std::vector<SampleFile> files;
  std::vector<std::pair<std::string, std::string>> settings{};  // on top of the defaults
  bool isDeterministic = true;                                  // the same inputs give the same bytes
  // It makes one thing of what can be read, without a word about what can\'t.
  bool passesOverUnreadable = false;
};

// Null if the operation has none.
const Sample* sampleFor(std::string_view operationID);

}  // namespace quirn::tests
