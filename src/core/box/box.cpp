// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/box/box.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdlib>
#include <string>

#include "core/batch.h"
#include "core/box/attempt.h"
#include "core/box/module_operations.h"
#include "core/box/worker.h"
#include "core/box/worker_pool.h"
#include "platform/task_pool.h"

namespace quirn::box {
namespace {

bool runsHere(const OperationType& type) {
  return type.placement() == Placement::inProcess || type.isInteractive() || isBoxOff();
}

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

// The error that is being handled, as the person is told of it.
[[noreturn]] void rethrowFor(const std::string& name) {
  try {
    throw;
  } catch (const WorkerLost& lost) {
    throwFor(lost, name);
  }
}

std::string kindFor(const OperationType& type) {
  return std::string(type.module().empty() ? plainWorker : type.module());
}

}  // namespace

Box::Box(const std::filesystem::path& program, BoxLimits limits)
    : limits_(limits), pool_(std::make_unique<WorkerPool>(program)) {}

Box::~Box() = default;

Box& Box::shared() {
  static Box box(platform::ownProgram);
  return box;
}

void Box::prepare(const OperationType& type, std::ptrdiff_t inputCount) {
  if (runsHere(type) || inputCount == 0) return;
  pool_->prepare(kindFor(type),
                 type.isPerFile() ? std::min<std::ptrdiff_t>(inputCount, platform::activeProcessorCount()) : 1);
}

OperationResult Box::run(const OperationType& type, std::span<const InputFile> inputs, const OperationConfig* config,
                         OperationContext& context) {
  if (runsHere(type)) return runHere(type, inputs, config, context);
  if (config != nullptr && !type.owns(*config)) throw OperationError::unsupportedInput("Bad config.");
  context.checkCancellation();
  if (!type.isPerFile()) return resultOf({type, inputs, config, context});
  return runBatch(
      inputs, context,
      [&](std::span<const InputFile> files, const Report& report) {
        runOnEach({type, files, config, context}, report);
      },
      limits_.grouping);
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
  request({type, inputs, nullptr, context, Requests::Wanted::configuration}, limits, [&](Grant& grant) {
    grant.result();
    const Panel panel = type.configPanel(*config);
    for (const Setting& setting : grant.settings()) panel.restore(*config, setting.key, setting.value);
  });
  return config;
}

void Box::runOnEach(const Requests& requests, const Report& report) {
  const std::span<const InputFile> alone = requests.inputs.size() > 1 ? runTogether(requests, report) : requests.inputs;
  for (const InputFile& input : alone) {
    report([&] {
      requests.context.checkCancellation();
      return resultOf({requests.type, std::span(&input, 1), requests.config, requests.context}).outputs.front();
    });
  }
}

// What ends a worker that has several files may be the fault of any of them, since it doesn't say at once which it has
// done. Those that are left are to be tried one by one; but what has published something would do so twice.
std::span<const InputFile> Box::runTogether(const Requests& requests, const Report& report) {
  const std::string kind = kindFor(requests.type);
  WorkerPool::Worker worker = pool_->takeWarm(kind);
  if (worker == nullptr) return requests.inputs;
  Attempt attempt(*worker, requests, limits_, ++serial_);
  try {
    attempt.serve([&](Grant& grant) { report([&] { return grant.result().outputs.front(); }); });
    pool_->keep(kind, std::move(worker));
    return {};
  } catch (const std::exception&) {
    const std::span<const InputFile> left = attempt.unserved();
    if (left.empty() || !attempt.grant().hasPublished()) return left;
    report([&]() -> OutputFile { rethrowFor(left.front().fileName()); });
    return left.subspan(1);
  }
}

OperationResult Box::resultOf(const Requests& wanted) {
  OperationResult result;
  request(wanted, limits_, [&](Grant& grant) { result = grant.result(); });
  return result;
}

// A worker that served another file before may be that one's victim, so a file that spoils it gets a second try in a
// new worker.
void Box::request(const Requests& wanted, const BoxLimits& limits, const std::function<void(Grant&)>& take) {
  const std::string kind = kindFor(wanted.type);
  WorkerPool::Worker worker = pool_->takeWarm(kind);
  for (bool isNew = worker == nullptr;; isNew = true) {
    if (isNew) worker = pool_->start(kind);
    Attempt attempt(*worker, wanted, limits, ++serial_);
    try {
      attempt.serve();
      pool_->keep(kind, std::move(worker));
      return take(attempt.grant());
    } catch (const WorkerLost& lost) {
      if (isNew || lost.how() == WorkerLost::How::slowToStop || attempt.grant().hasPublished())
        throwFor(lost, nameFor(wanted.inputs));
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
