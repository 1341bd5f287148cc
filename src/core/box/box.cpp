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
  if (!type.isPerFile()) return request({type, inputs, config, context});
  return runBatch(inputs, context, [&](const InputFile& input) {
    return request({type, std::span(&input, 1), config, context}).outputs.front();
  });
}

// A worker that served another file before may be that one's victim, so a file that spoils it gets a second try in a
// new worker.
OperationResult Box::request(const Request& request) {
  const std::string_view module = request.type.module();
  const std::string kind(module.empty() ? plainWorker : module);
  WorkerPool::Worker worker = pool_->takeWarm(kind);
  for (bool isNew = worker == nullptr;; isNew = true) {
    if (isNew) worker = pool_->start(kind);
    Attempt attempt(*worker, request, limits_, ++serial_);
    try {
      attempt.serve();
      pool_->keep(kind, std::move(worker));
      return attempt.result();
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
