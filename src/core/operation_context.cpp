// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/operation_context.h"

#include <fmt/format.h>

#include <algorithm>

#include "core/operation_error.h"

namespace quirn {

OperationContext::OperationContext(std::int64_t unitCount, std::optional<std::filesystem::path> outputDirectory)
    : progress_(std::max<std::int64_t>(1, unitCount)), outputDirectory_(std::move(outputDirectory)) {}

void OperationContext::setStatus(std::string text) {
  const std::scoped_lock guard(statusLock_);
  status_.swap(text);
}

std::string OperationContext::currentStatus() const {
  const std::scoped_lock guard(statusLock_);
  return status_;
}

void OperationContext::checkCancellation() const {
  if (stopSource_.stop_requested()) throw CancellationError();
}

std::unique_ptr<StagedOutput> OperationContext::stage(const InputFile& input, std::string_view suffix,
                                                      std::string_view extension) {
  return stage(input, OutputNaming{input.stem(), std::string(suffix), std::string(extension)});
}

OutputFile writeTextOutput(OperationContext& context, const InputFile& input, std::string_view suffix,
                           std::string_view extension, std::string_view text, std::string_view failure) {
  const auto output = context.stage(input, suffix, extension);
  try {
    output->write(text);
  } catch (const OperationError& error) {
    throw OperationError::writeFailed(output->url(), fmt::format("{} {}", failure, error.underlying()));
  }
  return output->publish(OutputRole::primary);
}

}  // namespace quirn
