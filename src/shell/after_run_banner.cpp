// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shell/after_run_banner.h"

#include <fmt/format.h>

#include "shell/listed_names.h"

namespace quirn {
namespace {

BannerStyle styleFor(const OperationResult& result) {
  if (result.failures.empty()) return BannerStyle::success;
  return result.outputs.empty() ? BannerStyle::error : BannerStyle::warning;
}

std::string messageFor(std::string_view displayName, const OperationResult& result) {
  if (result.summary) return *result.summary;
  const bool hasOutputs = !result.outputs.empty();
  if (!result.failures.empty()) {
    return hasOutputs ? fmt::format("{}: some files couldn’t be processed.", displayName)
                      : fmt::format("{} failed.", displayName);
  }
  if (!hasOutputs) return fmt::format("{} done.", displayName);
  std::vector<std::string> names;
  for (const OutputFile& output : result.outputs) names.push_back(output.url.filename().string());
  return fmt::format("Created {}", listedNames(names));
}

}  // namespace

AfterRunBanner afterRunBanner(std::string_view displayName, const RunOutcome& outcome) {
  try {
    const OperationResult& result = outcome.result();
    return {styleFor(result), messageFor(displayName, result)};
  } catch (const CancellationError&) {
    return {BannerStyle::info, "Cancelled."};
  } catch (const OperationError& error) {
    if (error.kind() == OperationError::Kind::cancelled) return {BannerStyle::info, "Cancelled."};
    return {BannerStyle::error, error.userMessage()};
  } catch (...) {  // A fault of ours has no text that helps the person.
    return {BannerStyle::error, fmt::format("{} failed.", displayName)};
  }
}

}  // namespace quirn
