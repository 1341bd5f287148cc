// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The context of a run in this process: it opens files itself.
//
// Outputs are published in groups. Waiting for the disk once per output would cost more than making
// it; so what the workers hand over is kept unnamed until the driver, between two results, flushes
// all of it together and then names it; a worker does so itself when too much has gathered. A
// program that is killed, or a machine that loses power, leaves whole files under their names or
// none.

#pragma once

#include <algorithm>
#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <system_error>
#include <variant>
#include <vector>

#include "core/operation_context.h"
#include "core/operation_error.h"
#include "platform/file_descriptor.h"
#include "platform/staged_file.h"
#include "platform/staged_tree.h"

namespace quirn {

class LocalContext final : public OperationContext {
 public:
  using OperationContext::OperationContext;

  InputHandle open(const InputFile& input) override;
  Neighbour openNeighbour(const InputFile& input, const std::filesystem::path& name) override;
  std::vector<InputFile> enumerate(const InputFile& folder) override;
  using OperationContext::stage;
  std::unique_ptr<StagedOutput> stage(const InputFile& beside, const OutputNaming& naming) override;
  std::unique_ptr<StagedFolder> stageFolder(const InputFile& beside, const OutputNaming& naming) override;
  void publishStaged() override;
  OutputFile published(OutputFile output) override;
  void finish() override;

 private:
  class Output;

  // A name that was asked for, so that the next free one can be found should another program take
  // it.
  struct OutputName {
    OutputNaming naming;
    std::filesystem::path url;
    std::filesystem::path next() { return url = uniqueOutputURL(url.parent_path(), naming); }
  };
  struct HandedOver {
    OutputFile output;
    OutputName name;
    platform::StagedFile file;
  };

  using Folder = std::shared_ptr<const platform::OutputFolder>;

  Folder outputFolder(const std::filesystem::path& path);
  OutputName nameBeside(const InputFile& input, const OutputNaming& naming) const;
  OutputFile handOver(OutputName name, platform::StagedFile file, OutputRole role);
  void publish(HandedOver item, std::error_code flushError);
  OutputFile publish(platform::StagedTree& tree, OutputName name, OutputRole role);
  void flushFolders();

  // Each waiting output and each open folder holds a descriptor; together they take about half of
  // those that the process may have, even where every output has a folder of its own.
  const std::size_t mostWaiting_ = std::clamp<std::size_t>(platform::descriptorLimit() / 16, 1, 4096);
  const std::size_t mostFolders_ = std::clamp<std::size_t>(platform::descriptorLimit() / 8, 1, 64);

  // One group is published at a time, so that whoever asks for an output behind that finds it, and
  // no more than one gathers meanwhile. Taken before mutex_.
  std::mutex publishing_;
  std::mutex mutex_;
  // All guarded by mutex_.
  std::map<std::string, Folder> folders_;  // by path; opened and swept
  std::set<Folder> unflushedFolders_;      // with names that a power cut could still take
  std::vector<HandedOver> handedOver_;
  // What became of the outputs that are not under the name that was kept for them.
  std::map<platform::Uuid, std::variant<std::filesystem::path, OperationError>> surprises_;
};

}  // namespace quirn
