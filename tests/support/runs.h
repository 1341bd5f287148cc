// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Operations run in the test's own process, as a front end would.

#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "core/local_context.h"
#include "core/registry.h"

namespace quirn::tests {

// Everything that Quirn can do.
const OperationRegistry& catalog();

// The input at a location that exists.
InputFile inputAt(const std::filesystem::path& path);
// Inputs of these names that nothing stands behind.
std::vector<InputFile> inputsNamed(const std::vector<std::string>& names);

std::shared_ptr<LocalContext> contextIn(std::optional<std::filesystem::path> outputDirectory = {});

// How a run ended: one of these is set.
struct Ran {
  std::optional<OperationResult> result;
  std::optional<OperationError> error;
  bool cancelled = false;
  std::string fault;  // any other exception
};

// Runs to the end, a minute at most. Without `config`, with the default settings.
Ran runOperation(const OperationType& type, std::vector<InputFile> inputs,
                 const std::shared_ptr<OperationContext>& context, const OperationConfig* config = nullptr);

// The settings that a front end would begin with on these inputs.
std::unique_ptr<OperationConfig> configurationOf(const OperationType& type, const std::vector<InputFile>& inputs);

// A context for drivers alone: it reaches no file, and every output is what it is.
class BareContext : public OperationContext {
 public:
  BareContext() : OperationContext(1, std::nullopt) {}
  InputHandle open(const InputFile& input) override;
  Neighbour openNeighbour(const InputFile& input, const std::filesystem::path& name) override;
  std::vector<InputFile> enumerate(const InputFile& folder) override;
  using OperationContext::stage;
  std::unique_ptr<StagedOutput> stage(const InputFile& beside, const OutputNaming& naming) override;
  std::unique_ptr<StagedFolder> stageFolder(const InputFile& beside, const OutputNaming& naming) override;
  void publishStaged() override {}
  OutputFile published(OutputFile output) override { return output; }
  void finish() override {}
};

// Threads meet here. Nobody waits for longer than half a minute.
class Meeting {
 public:
  void arrive();
  // False if fewer than `count` came in time.
  bool waitFor(int count);

 private:
  std::mutex mutex_;
  std::condition_variable changed_;
  int arrived_ = 0;  // guarded by mutex_
};

}  // namespace quirn::tests
