// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "support/runs.h"

#include <chrono>

#include "catalog/catalog.h"
#include "core/runner.h"

namespace quirn::tests {
namespace {

using std::chrono::steady_clock;

Ran resultOf(const RunOutcome& outcome) {
  Ran ran;
  try {
    ran.result = outcome.result();
  } catch (const CancellationError&) {
    ran.cancelled = true;
  } catch (const OperationError& error) {
    ran.cancelled = error.kind() == OperationError::Kind::cancelled;
    ran.error = error;
  } catch (const std::exception& fault) {
    ran.fault = fault.what();
  }
  return ran;
}

// Workers are the program itself; a test's own is none.
box::Box& boxOfTests() {
  static box::Box box(QUIRN_PROGRAM);
  return box;
}

[[noreturn]] void unreachable() {
  throw std::logic_error("a context without files");
}

}  // namespace

const OperationRegistry& catalog() {
  static const OperationRegistry registry = [] {
    OperationRegistry filled;
    registerAllOperations(filled);
    return filled;
  }();
  return registry;
}

InputFile inputAt(const std::filesystem::path& path) {
  return takeIn(std::span(&path, 1)).files.at(0);
}

std::vector<InputFile> inputsNamed(const std::vector<std::string>& names) {
  std::vector<InputFile> inputs;
  for (const std::string& name : names) {
    inputs.push_back({platform::Uuid::random(), "/nowhere/" + name, ContentType("application/octet-stream"), 0, false,
                      std::nullopt});
  }
  return inputs;
}

std::shared_ptr<LocalContext> contextIn(std::optional<std::filesystem::path> outputDirectory) {
  return std::make_shared<LocalContext>(1, std::move(outputDirectory));
}

Ran runOperation(const OperationType& type, std::vector<InputFile> inputs,
                 const std::shared_ptr<OperationContext>& context, const OperationConfig* config) {
  platform::PlainMainQueue queue;
  std::optional<Ran> ran;
  const auto completion = [&](const RunOutcome& outcome) { ran = resultOf(outcome); };
  const OperationRunner runner(queue, boxOfTests());
  const auto deadline = steady_clock::now() + std::chrono::minutes(1);
  const Run run = config == nullptr ? runner.run(type, std::move(inputs), context, completion)
                                    : runner.runConfigured(type, std::move(inputs), *config, context, completion);
  queue.runUntil([&] { return ran || steady_clock::now() > deadline; }, std::chrono::milliseconds(100), [] {});
  return ran.value_or(Ran{.result = {}, .error = {}, .fault = "the run did not end"});
}

std::unique_ptr<OperationConfig> configurationOf(const OperationType& type, const std::vector<InputFile>& inputs) {
  return boxOfTests().configurationFor(type, inputs, *contextIn());
}

InputHandle BareContext::open(const InputFile&) {
  unreachable();
}
Neighbour BareContext::openNeighbour(const InputFile&, const std::filesystem::path&) {
  unreachable();
}
std::vector<InputFile> BareContext::enumerate(const InputFile&) {
  unreachable();
}
std::unique_ptr<StagedOutput> BareContext::stage(const InputFile&, const OutputNaming&) {
  unreachable();
}
std::unique_ptr<StagedFolder> BareContext::stageFolder(const InputFile&, const OutputNaming&) {
  unreachable();
}

void Meeting::arrive() {
  const std::scoped_lock guard(mutex_);
  ++arrived_;
  changed_.notify_all();
}

bool Meeting::waitFor(int count) {
  std::unique_lock guard(mutex_);
  return changed_.wait_for(guard, std::chrono::seconds(30), [&] { return arrived_ >= count; });
}

}  // namespace quirn::tests
