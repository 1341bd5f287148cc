// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// PDF operations run on files that a test makes, and what independent programs find in the outputs.

#pragma once

#include <string>
#include <utility>
#include <vector>

#include "support/runs.h"
#include "support/temporary_folder.h"

namespace quirn::tests {

using Settings = std::vector<std::pair<std::string, std::string>>;

class PDFRuns {
 public:
  std::filesystem::path file(const std::string& name, const std::string& content) const {
    return folder_.file(name, content);
  }
  std::filesystem::path operator/(const std::string& name) const { return folder_ / name; }

  // The operation's result on these files, in workers, outputs beside them.
  Ran run(const std::string& operationID, const std::vector<std::filesystem::path>& files,
          const Settings& settings = {}) const;

  // The same, with the settings that the files say in place of those that aren't given.
  static std::unique_ptr<OperationConfig> configurationFor(const std::string& operationID,
                                                           const std::filesystem::path& file);

 private:
  TemporaryFolder folder_;
};

// The names of the outputs, or what the person reads instead.
std::string outcomeOf(const Ran& ran);

// What another program prints; its standard error where it fails.
std::string printed(const std::string& program, std::vector<std::string> arguments);

// Empty if qpdf finds nothing to say about the file.
std::string complaintsAbout(const std::filesystem::path& file, const std::string& password = "");
// The words on the pages, in one line; a page ends with "|".
std::string wordsOf(const std::filesystem::path& file);

}  // namespace quirn::tests
