// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/runner.h"

#include "core/local_context.h"

namespace quirn {
namespace {

// Every output has its name before the result tells of it.
OperationResult confirmed(OperationResult result, OperationContext& context) {
  for (OutputFile& output : result.outputs) output = context.published(std::move(output));
  return result;
}

RunOutcome runToEnd(const std::function<OperationResult(OperationContext&)>& work, OperationContext& context) {
  try {
    OperationResult result = work(context);
    context.finish();
    return RunOutcome(confirmed(std::move(result), context));
  } catch (...) {  // The thread ends here; the error goes on on the interface thread.
    const std::exception_ptr error = std::current_exception();
    try {
      context.finish();  // What was finished before the error stays.
    } catch (const OperationError&) {
      // The first error is the one that the person can act on.
    }
    return RunOutcome(error);
  }
}

}  // namespace

const OperationResult& RunOutcome::result() const {
  if (const auto* error = std::get_if<std::exception_ptr>(&value_)) std::rethrow_exception(*error);
  return std::get<OperationResult>(value_);
}

Run::~Run() {
  if (!task_.joinable()) return;
  context_->progress().cancel();
  task_.join();
}

Run OperationRunner::run(const OperationType& type, std::vector<InputFile> inputs,
                         std::optional<std::filesystem::path> outputDirectory, Completion completion) const {
  auto context = std::make_shared<LocalContext>(std::ssize(inputs), std::move(outputDirectory));
  return run(type, std::move(inputs), std::move(context), std::move(completion));
}

Run OperationRunner::run(const OperationType& type, std::vector<InputFile> inputs,
                         std::shared_ptr<OperationContext> context, Completion completion) const {
  return start(
      std::move(context),
      [&box = box_, type, inputs = std::move(inputs)](OperationContext& own) {
        return box.run(type, inputs, nullptr, own);
      },
      std::move(completion));
}

Run OperationRunner::runConfigured(const OperationType& type, std::vector<InputFile> inputs,
                                   const OperationConfig& config, std::shared_ptr<OperationContext> context,
                                   Completion completion) const {
  const std::shared_ptr<const OperationConfig> settings = type.copyOf(config);
  return start(
      std::move(context),
      [&box = box_, type, inputs = std::move(inputs), settings](OperationContext& own) {
        return box.run(type, inputs, settings.get(), own);
      },
      std::move(completion));
}

Run OperationRunner::configure(const OperationType& type, std::vector<InputFile> inputs,
                               std::shared_ptr<OperationContext> context, ConfigurationCompletion completion) const {
  const auto config = std::make_shared<std::unique_ptr<OperationConfig>>();
  return start(
      std::move(context),
      [&box = box_, type, inputs = std::move(inputs), config](OperationContext& own) {
        *config = box.configurationFor(type, inputs, own);
        return OperationResult();
      },
      [config, completion = std::move(completion)](const RunOutcome&) { completion(std::move(*config)); });
}

Run OperationRunner::start(std::shared_ptr<OperationContext> context, Work work, Completion completion) const {
  context->progress().setCancellationHandler([weak = std::weak_ptr(context)] {
    if (const auto running = weak.lock()) running->requestStop();
  });
  std::thread task([&queue = queue_, context, work = std::move(work), completion = std::move(completion)] {
    queue.post([completion, outcome = runToEnd(work, *context)] { completion(outcome); });
  });
  return {std::move(context), std::move(task)};
}

}  // namespace quirn
