// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/local_context.h"

#include <algorithm>
#include <system_error>

#include "core/local_folder.h"
#include "core/output_name.h"
#include "core/safe_path.h"
#include "platform/file_status.h"
#include "platform/hidden_name.h"

namespace quirn {
namespace fs = std::filesystem;
namespace {

// What a name gives behind which no file can be.
bool leadsNowhere(const std::error_code& error) {
  return error == std::errc::no_such_file_or_directory || error == std::errc::not_a_directory ||
         error == std::errc::too_many_symbolic_link_levels || error == std::errc::filename_too_long;
}

// Gives it the kept name, or the next free one, which it returns.
template <class Staged, class Name>
fs::path nameStaged(Staged& staged, Name& name) {
  while (!staged.publishAs(name.url.filename().string())) name.next();
  return name.url;
}

}  // namespace

class LocalContext::Output final : public StagedOutput {
 public:
  Output(LocalContext& context, OutputName name, platform::StagedFile file)
      : context_(context), name_(std::move(name)), file_(std::move(file)) {}

  int descriptor() const override { return file_.descriptor(); }
  const fs::path& url() const override { return name_.url; }
  OutputFile publish(OutputRole role) override { return context_.handOver(name_, std::move(file_), role); }

 private:
  LocalContext& context_;
  OutputName name_;
  platform::StagedFile file_;
};

InputHandle LocalContext::open(const InputFile& input) {
  try {
    return {platform::ReadableFile::open(input.url), input.url};
  } catch (const std::system_error& error) {
    throw OperationError::readFailed(input.url, std::string("Couldn't open the file for reading. ") + error.what());
  }
}

Neighbour LocalContext::openNeighbour(const InputFile& input, const fs::path& name) {
  const fs::path folder = input.url.parent_path();
  const auto inside = pathInside(folder, name);
  if (!inside) return {Neighbour::Place::outside, std::nullopt};
  try {
    return {Neighbour::Place::here,
            InputHandle(platform::ReadableFile::openBeneath(folder, *inside), folder / *inside)};
  } catch (const std::system_error& error) {
    if (error.code() == std::errc::cross_device_link) return {Neighbour::Place::outside, std::nullopt};
    if (leadsNowhere(error.code())) return {Neighbour::Place::missing, std::nullopt};
    throw OperationError::readFailed(folder / *inside,
                                     std::string("Couldn't open the file for reading. ") + error.what());
  }
}

std::vector<InputFile> LocalContext::enumerate(const InputFile& folder) {
  try {
    std::vector<fs::path> paths;
    if (!platform::isReadable(folder.url)) throw OperationError::readFailed(folder.url, "The folder can't be read.");
    // A folder in it that nobody may look into is passed over, as a file that nobody may read is.
    fs::recursive_directory_iterator entry(folder.url, fs::directory_options::skip_permission_denied);
    for (; entry != fs::recursive_directory_iterator(); ++entry) {
      checkCancellation();
      if (platform::isHiddenName(entry->path().filename().native())) {
        entry.disable_recursion_pending();  // an output that is being made, perhaps this run's own
      } else if (entry->symlink_status().type() == fs::file_type::regular) {
        paths.push_back(entry->path());
      }
    }
    std::ranges::sort(paths);
    return takeIn(paths).files;
  } catch (const fs::filesystem_error& error) {
    throw OperationError::readFailed(error.path1().empty() ? folder.url : error.path1(), error.what());
  }
}

LocalContext::Folder LocalContext::outputFolder(const fs::path& path) {
  const std::scoped_lock guard(mutex_);
  if (const auto known = folders_.find(path.native()); known != folders_.end()) return known->second;
  if (folders_.size() >= mostFolders_) folders_.clear();
  const auto folder = std::make_shared<const platform::OutputFolder>(path);
  folder->sweepLeftovers();
  return folders_[path.native()] = folder;
}

LocalContext::OutputName LocalContext::nameBeside(const InputFile& input, const OutputNaming& naming) const {
  return {naming, uniqueOutputURL(outputDirectory().value_or(input.url.parent_path()), naming)};
}

std::unique_ptr<StagedOutput> LocalContext::stage(const InputFile& beside, const OutputNaming& naming) {
  OutputName name = nameBeside(beside, naming);
  try {
    auto file = platform::StagedFile::create(outputFolder(name.url.parent_path()));
    return std::make_unique<Output>(*this, std::move(name), std::move(file));
  } catch (const std::system_error& error) {
    throw OperationError::writeFailed(name.url, error.what());
  }
}

std::unique_ptr<StagedFolder> LocalContext::stageFolder(const InputFile& beside, const OutputNaming& naming) {
  OutputName name = nameBeside(beside, naming);
  try {
    auto tree = platform::StagedTree::create(outputFolder(name.url.parent_path()));
    const fs::path url = name.url;
    return std::make_unique<LocalFolder>(
        url, std::move(tree),
        [this, name](platform::StagedTree& whole, OutputRole role) { return publish(whole, name, role); });
  } catch (const std::system_error& error) {
    throw OperationError::writeFailed(name.url, error.what());
  }
}

// By itself, since a folder's many files are one wait for the disk already.
OutputFile LocalContext::publish(platform::StagedTree& tree, OutputName name, OutputRole role) {
  try {
    if (const std::error_code error = tree.flush()) throw std::system_error(error);
    OutputFile output{platform::Uuid::random(), nameStaged(tree, name), role};
    const std::scoped_lock guard(mutex_);
    unflushedFolders_.insert(tree.parent());
    return output;
  } catch (const std::system_error& error) {
    throw OperationError::writeFailed(name.url, error.what());
  }
}

OutputFile LocalContext::handOver(OutputName name, platform::StagedFile file, OutputRole role) {
  OutputFile output{platform::Uuid::random(), name.url, role};
  std::size_t waiting = 0;
  {
    const std::scoped_lock guard(mutex_);
    handedOver_.push_back({output, std::move(name), std::move(file)});
    waiting = handedOver_.size();
  }
  if (waiting >= mostWaiting_) publishStaged();
  return output;
}

void LocalContext::publishStaged() {
  const std::scoped_lock oneAtATime(publishing_);
  std::vector<HandedOver> group;
  bool manyFolders = false;
  {
    const std::scoped_lock guard(mutex_);
    group.swap(handedOver_);
    manyFolders = unflushedFolders_.size() >= mostFolders_;
  }
  if (manyFolders) flushFolders();
  std::vector<const platform::StagedFile*> files;
  for (const HandedOver& item : group) files.push_back(&item.file);
  const std::vector<std::error_code> errors = platform::flushAll(files);
  for (std::size_t i = 0; i < group.size(); ++i) publish(std::move(group[i]), errors[i]);
}

void LocalContext::publish(HandedOver item, std::error_code flushError) {
  std::variant<fs::path, OperationError> outcome;
  try {
    if (flushError) throw std::system_error(flushError);
    outcome = nameStaged(item.file, item.name);
  } catch (const std::system_error& error) {
    outcome = OperationError::writeFailed(item.name.url, error.what());
  }
  const auto* url = std::get_if<fs::path>(&outcome);
  const bool asExpected = url != nullptr && *url == item.output.url;
  const std::scoped_lock guard(mutex_);
  unflushedFolders_.insert(item.file.folder());
  if (!asExpected) surprises_.emplace(item.output.id, std::move(outcome));
}

OutputFile LocalContext::published(OutputFile output) {
  const std::scoped_lock guard(mutex_);
  const auto surprise = surprises_.find(output.id);
  if (surprise == surprises_.end()) return output;
  if (const auto* error = std::get_if<OperationError>(&surprise->second)) throw OperationError(*error);
  output.url = std::get<fs::path>(surprise->second);
  return output;
}

void LocalContext::finish() {
  publishStaged();
  flushFolders();
}

void LocalContext::flushFolders() {
  std::set<Folder> folders;
  {
    const std::scoped_lock guard(mutex_);
    folders.swap(unflushedFolders_);
  }
  std::optional<OperationError> firstError;
  for (const Folder& folder : folders) {
    try {
      folder->flush();
    } catch (const std::system_error& error) {
      if (!firstError) firstError = OperationError::writeFailed(folder->path(), error.what());
    }
  }
  if (firstError) throw OperationError(*firstError);
}

}  // namespace quirn
