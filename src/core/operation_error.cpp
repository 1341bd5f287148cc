// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/operation_error.h"

#include <fmt/format.h>

namespace quirn {

OperationError::OperationError(Kind kind, std::string subject, std::string underlying)
    : kind_(kind), subject_(std::move(subject)), underlying_(std::move(underlying)) {}

OperationError OperationError::unsupportedInput(std::string reason) {
  return {Kind::unsupportedInput, std::move(reason), {}};
}

OperationError OperationError::readFailed(const std::filesystem::path& url, std::string underlying) {
  return {Kind::readFailed, url.filename().string(), std::move(underlying)};
}

OperationError OperationError::writeFailed(const std::filesystem::path& url, std::string underlying) {
  return {Kind::writeFailed, url.filename().string(), std::move(underlying)};
}

OperationError OperationError::engineFailed(std::string stage, std::string underlying) {
  return {Kind::engineFailed, std::move(stage), std::move(underlying)};
}

OperationError OperationError::sandboxAccessDenied(const std::filesystem::path& url) {
  return {Kind::sandboxAccessDenied, url.filename().string(), {}};
}

OperationError OperationError::cancelled() {
  return {Kind::cancelled, {}, {}};
}

OperationError OperationError::restored(Kind kind, std::string subject, std::string underlying) {
  return {kind, std::move(subject), std::move(underlying)};
}

std::string OperationError::userMessage() const {
  switch (kind_) {
    case Kind::unsupportedInput: return fmt::format("Quirn can't run this on these files. {}", subject_);
    case Kind::readFailed: return fmt::format("Couldn't read {}.", subject_);
    case Kind::writeFailed: return fmt::format("Couldn't write {}.", subject_);
    case Kind::engineFailed: return fmt::format("Something went wrong during {}.", subject_);
    case Kind::sandboxAccessDenied: return fmt::format("Quirn lost access to {}. Drag it in again.", subject_);
    case Kind::cancelled: break;
  }
  return "Operation cancelled.";
}

}  // namespace quirn
