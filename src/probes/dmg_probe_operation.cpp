// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "probes/dmg_probe_operation.h"

#include <fmt/format.h>

#include <system_error>

#include "platform/subprocess.h"

namespace quirn {
namespace {

constexpr const char* program = "/bin/echo";
constexpr const char* said = "quirn";

[[noreturn]] void throwProbeFailed(std::string underlying) {
  throw OperationError::engineFailed("the probe", std::move(underlying));
}

platform::FinishedProgram finished() {
  try {
    return platform::runSubprocess(program, {said});
  } catch (const std::system_error& error) {
    throwProbeFailed(fmt::format("{} could not be started. {}", program, error.what()));
  }
}

}  // namespace

const OperationInfo& DMGProbeOperation::info() {
  static const OperationInfo info{
      .operationID = "dmg.probe",
      .displayName = "DMG Probe",
      .iconName = "stethoscope",
      .category = OperationCategory::utility,
      .aliases = {"smoke test", "dmg test"},
      .about = "Starts /bin/echo and reports that it ran.",
  };
  return info;
}

const AcceptedInputs& DMGProbeOperation::accepts() {
  static const AcceptedInputs accepts{.atLeast = 0, .atMost = 0};
  return accepts;
}

OperationResult DMGProbeOperation::run(std::span<const InputFile>, OperationContext& context) const {
  context.setStatus(fmt::format("Running {}…", program));
  context.checkCancellation();
  const platform::FinishedProgram echo = finished();
  if (echo.exitStatus != 0 || echo.output != fmt::format("{}\n", said)) {
    throwProbeFailed(fmt::format("{} ended with status {} and wrote “{}”.", program, echo.exitStatus, echo.output));
  }
  context.progress().complete(1);
  return {.outputs = {}, .summary = fmt::format("{} ran.", program), .failures = {}};
}

}  // namespace quirn
