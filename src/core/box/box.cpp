// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/box/box.h"

#include <fmt/format.h>

#include <cstdlib>
#include <string>

#include "core/batch.h"
#include "core/box/attempt.h"
#include "core/box/module_operations.h"
#include "core/box/worker.h"
#include "core/box/worker_pool.h"

namespace quirn::box {
namespace {

OperationResult runHere(const OperationType& described, std::span<const InputFile> inputs,
                        const OperationConfig* config, OperationContext& context) {
  const auto operation = withCode(described).make();
  if (config == nullptr) return operation->run(inputs, context);
  return dynamic_cast<const AnyConfigurableOperation&>(*operation).runConfigured(inputs, *config, context);
}

[[noreturn]] void throwFor(const WorkerLost& lost, const std::string& name) {
  switch (lost.how()) {
    case WorkerLost::How::slowToStop: throw CancellationError();
    case WorkerLost::How::silent: throw breachOf(Budget::secondsOfSilence, name);
    case WorkerLost::How::misbehaved:
      throw OperationError::unsupportedInput(
          fmt::format("{} made the program that read it ask for what it was not given.", name));
    case WorkerLost::How::died: break;
  }
  throw OperationError::unsupportedInput(
      fmt::format("{} is damaged in a way that stopped the program that read it.", name));
}

}  // namespace

Box::Box(const std::filesystem::path& program, BoxLimits limits)
    : limits_(limits), pool_(std::make_unique<WorkerPool>(program)) {}

Box::~Box() = default;

Box& Box::shared() {
  static Box box(platform::ownProgram);
  return box;
}

OperationResult Box::run(const OperationType& type, std::span<const InputFile> inputs, const OperationConfig* config,
                         OperationContext& context) {
  if (type.placement() == Placement::inProcess || type.isInteractive() || isBoxOff())
    return runHere(type, inputs, config, context);
  if (config != nullptr && !type.owns(*config)) throw OperationError::unsupportedInput("Bad config.");
  context.checkCancellation();
  if (!type.isPerFile()) return resultOf({type, inputs, config, context});
  return runBatch(inputs, context, [&](const InputFile& input) {
    return resultOf({type, std::span(&input, 1), config, context}).outputs.front();
  });
}

std::unique_ptr<OperationConfig> Box::configurationFor(const OperationType& type, std::span<const InputFile> inputs,
                                                       OperationContext& context) {
  if (!type.isConfiguredFromInputs()) return type.defaultConfig();
  context.checkCancellation();
  try {
    return readConfiguration(type, inputs, context);
  } catch (const OperationError&) {
    return type.defaultConfig();  // The run meets the same error, and tells of it.
  }
}

std::unique_ptr<OperationConfig> Box::readConfiguration(const OperationType& type, std::span<const InputFile> inputs,
                                                        OperationContext& context) {
  if (type.placement() == Placement::inProcess || isBoxOff()) return withCode(type).configurationFor(inputs, context);
  auto config = type.defaultConfig();
  BoxLimits limits = limits_;
  limits.outputs = 0;
  request({type, inputs, nullptr, context, Request::Wanted::configuration}, limits, [&](Attempt& attempt) {
    attempt.result();
    const Panel panel = type.configPanel(*config);
    for (const Setting& setting : attempt.settings()) panel.restore(*config, setting.key, setting.value);
  });
  return config;
}

OperationResult Box::resultOf(const Request& wanted) {
  OperationResult result;
  request(wanted, limits_, [&](Attempt& attempt) { result = attempt.result(); });
  return result;
}

// A worker that served another file before may be that one's victim, so a file that spoils it gets a second try in a
// new worker.
void Box::request(const Request& request, const BoxLimits& limits, const std::function<void(Attempt&)>& take) {
  const std::string_view module = request.type.module();
  const std::string kind(module.empty() ? plainWorker : module);
  WorkerPool::Worker worker = pool_->takeWarm(kind);
  for (bool isNew = worker == nullptr;; isNew = true) {
    if (isNew) worker = pool_->start(kind);
    Attempt attempt(*worker, request, limits, ++serial_);
    try {
      attempt.serve();
      pool_->keep(kind, std::move(worker));
      return take(attempt);
    } catch (const WorkerLost& lost) {
      if (isNew || lost.how() == WorkerLost::How::slowToStop || attempt.hasPublished())
        throwFor(lost, nameFor(request.inputs));
    }
  }
}

bool isBoxOff() {
#ifdef NDEBUG
  return false;
#else
  const char* const value = std::getenv("QUIRN_BOX");
  return value != nullptr && std::string_view(value) == "off";
#endif
}

}  // namespace quirn::box
