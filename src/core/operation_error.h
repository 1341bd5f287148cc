// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What an operation throws. Its message is what the person reads.

#pragma once

#include <exception>
#include <filesystem>
#include <string>

namespace quirn {

class OperationError final : public std::exception {
 public:
  enum class Kind { unsupportedInput, readFailed, writeFailed, engineFailed, sandboxAccessDenied, cancelled };

  // `reason` is a full sentence, shown as it stands behind a fixed beginning.
  static OperationError unsupportedInput(std::string reason);
  // `underlying` is a detail for developers and logs; the person reads which file it was.
  static OperationError readFailed(const std::filesystem::path& url, std::string underlying);
  static OperationError writeFailed(const std::filesystem::path& url, std::string underlying);
  // `stage` completes "Something went wrong during …".
  static OperationError engineFailed(std::string stage, std::string underlying);
  static OperationError sandboxAccessDenied(const std::filesystem::path& url);
  static OperationError cancelled();

  // The parts of an error put together again.
  static OperationError restored(Kind kind, std::string subject, std::string underlying);

  Kind kind() const { return kind_; }

  // A reason, a file's name or a stage, as the kind has it.
  const std::string& subject() const { return subject_; }

  // One sentence for the person, or two.
  std::string userMessage() const;

  // The detail that userMessage() leaves out; may be empty.
  const std::string& underlying() const { return underlying_; }

  const char* what() const noexcept override { return underlying_.c_str(); }

 private:
  OperationError(Kind kind, std::string subject, std::string underlying);

  Kind kind_;
  std::string subject_;
  std::string underlying_;
};

// Thrown out of a run that was asked to stop. Not a failure of any file.
class CancellationError final : public std::exception {
 public:
  const char* what() const noexcept override { return "cancelled"; }
};

}  // namespace quirn
