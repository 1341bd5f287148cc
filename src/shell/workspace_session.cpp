// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shell/workspace_session.h"

#include <fmt/format.h>

#include <algorithm>
#include <set>
#include <string>
#include <system_error>
#include <utility>

#include "core/local_context.h"
#include "shell/after_run_banner.h"
#include "shell/dated_file.h"
#include "shell/image_format.h"
#include "shell/listed_names.h"

namespace quirn {
namespace fs = std::filesystem;

WorkspaceSession::WorkspaceSession(Surroundings surroundings)
    : surroundings_(std::move(surroundings)),
      outputDirectory_(surroundings_.outputDirectoryStore.load()),
      intake_(surroundings_.queue) {
  EventBus& events = surroundings_.events;
  subscriptions_ = {
      events.subscribe(notifications::openURLs,
                       std::function([this](const std::vector<fs::path>& urls) { ingest(urls); })),
      events.subscribe(notifications::runOpOnURLs,
                       std::function([this](const QuirnRunRequest& request) { attemptRun(request); })),
      events.subscribe(notifications::paste, std::function([this](const NoPayload&) { paste(); })),
      events.subscribe(notifications::scanReceived, std::function([this](const Scan& scan) { receive(scan); })),
  };
}

std::vector<const OperationType*> WorkspaceSession::suggestions() const {
  if (inputs_.empty()) return {};
  return surroundings_.registry.suggestions(inputs_);
}

void WorkspaceSession::warn(std::string message) {
  surroundings_.banners.post(BannerStyle::warning, std::move(message));
}

// --- inputs ---------------------------------------------------------------------------------------

void WorkspaceSession::ingest(const std::vector<fs::path>& locations) {
  if (locations.empty()) {
    warn("Nothing to ingest.");
    return;
  }
  intake_.take(locations, [this](Intake intake) {
    tellUnreadable(intake.unreadable);
    const std::size_t before = inputs_.size();
    add(std::move(intake.files));
    if (inputs_.size() == before && intake.unreadable.empty()) warn("Nothing to ingest.");
  });
}

void WorkspaceSession::add(std::vector<InputFile> files) {
  // A drop may hold thousands, so those that are there are not gone through for each.
  std::set<std::string> present;
  for (const InputFile& input : inputs_) present.insert(input.url.native());
  for (InputFile& file : files) {
    if (present.insert(file.url.native()).second) inputs_.push_back(std::move(file));
  }
  changed_.emit();
}

void WorkspaceSession::replaceInputs(const std::vector<fs::path>& locations) {
  if (locations.empty()) {
    warn("Nothing to ingest.");
    return;
  }
  intake_.take(locations, [this](Intake intake) {
    tellUnreadable(intake.unreadable);
    if (intake.files.empty()) return;
    inputs_.clear();
    add(std::move(intake.files));
  });
}

void WorkspaceSession::tellUnreadable(const std::vector<FileFailure>& unreadable) {
  if (unreadable.empty()) return;
  std::vector<std::string> names;
  for (const FileFailure& failure : unreadable) names.push_back(failure.fileName);
  surroundings_.banners.post(BannerStyle::error, fmt::format("Couldn't read {}.", listedNames(names)));
}

void WorkspaceSession::remove(std::span<const platform::Uuid> ids) {
  const std::set<platform::Uuid> removed(ids.begin(), ids.end());
  if (std::erase_if(inputs_, [&](const InputFile& input) { return removed.contains(input.id); }) > 0) changed_.emit();
}

void WorkspaceSession::clear() {
  inputs_.clear();
  outputs_.clear();
  changed_.emit();
}

// --- the gate -------------------------------------------------------------------------------------

bool WorkspaceSession::refuses(const OperationType& type, std::span<const InputFile> inputs) {
  const std::string_view name = type.info().displayName;
  std::string reason;
  if (!type.isBuilt()) {
    reason = fmt::format("{} isn’t built yet.", name);
  } else if (inputs.empty() && !type.canRun(inputs)) {
    reason = "Drop some files first.";
  } else if (isActive()) {
    reason = "Wait for the current operation to finish.";
  } else if (!type.canRun(inputs)) {
    reason = fmt::format("{} can't run on these files.", name);
  }
  if (reason.empty()) return false;
  warn(std::move(reason));
  return true;
}

void WorkspaceSession::attemptRun(const OperationType& type, std::vector<InputFile> inputs) {
  if (refuses(type, inputs)) return;
  if (type.isInteractive()) {
    editing_ = EditingSession{platform::Uuid::random(), &type, std::move(inputs)};
    changed_.emit();
  } else if (type.isConfigurable()) {
    configure(type, std::move(inputs));
  } else {
    start(type, std::move(inputs), nullptr);
  }
}

// The panel opens at once, or as soon as its settings are read from the inputs.
void WorkspaceSession::configure(const OperationType& type, std::vector<InputFile> inputs) {
  const auto open = [this, &type, inputs](std::unique_ptr<OperationConfig> config) {
    if (config) configuring_ = ConfiguringOperation{platform::Uuid::random(), &type, std::move(config), inputs};
    changed_.emit();
  };
  if (!type.isConfiguredFromInputs()) return open(type.defaultConfig());
  activeName_ = type.info().displayName;
  auto context = std::make_shared<LocalContext>(std::ssize(inputs), outputDirectory_);
  progress_ = ProgressMirror::of(context->progress(), surroundings_.queue);
  const OperationRunner runner(surroundings_.queue);
  const auto completion = [weak = std::weak_ptr(self_), open](std::unique_ptr<OperationConfig> config) {
    const auto self = weak.lock();
    if (!self) return;
    (*self)->progress_.reset();
    (*self)->run_.reset();
    (*self)->activeName_.clear();
    open(std::move(config));
  };
  run_.emplace(runner.configure(type, std::move(inputs), std::move(context), completion));
  changed_.emit();
}

void WorkspaceSession::attemptRun(const QuirnRunRequest& request) {
  if (request.urls.empty()) {
    warn("Nothing to open.");
    return;
  }
  const OperationType* const type = surroundings_.registry.byID(request.opID);
  if (type == nullptr) {
    warn("Quirn doesn’t have that operation.");
    return;
  }
  intake_.take(request.urls, [this, type](const Intake& intake) { runOnTaken(*type, intake); });
}

// A request names its own files: it runs on them, whatever else is in the list.
void WorkspaceSession::runOnTaken(const OperationType& type, const Intake& intake) {
  tellUnreadable(intake.unreadable);
  add(intake.files);
  // What is made of all files together must not be made of some of them.
  const bool isSpoilt = !intake.unreadable.empty() && !type.isPerFile();
  if (!isSpoilt && !intake.files.empty()) attemptRun(type, intake.files);
}

void WorkspaceSession::runConfigured() {
  if (!configuring_) return;
  if (isActive()) {
    warn("Wait for the current operation to finish.");
    return;
  }
  const ConfiguringOperation confirmed = *std::exchange(configuring_, std::nullopt);
  start(*confirmed.opType, confirmed.inputs, confirmed.config.get());
}

void WorkspaceSession::closePanel() {
  configuring_.reset();
  changed_.emit();
}

void WorkspaceSession::completeEditing(std::vector<OutputFile> outputs) {
  if (!editing_) return;
  const std::string_view name = editing_->opType->info().displayName;
  editing_.reset();
  outputs_ = std::move(outputs);
  const auto banner =
      afterRunBanner(name, RunOutcome(OperationResult{.outputs = outputs_, .summary = {}, .failures = {}}));
  surroundings_.banners.post(banner.style, banner.message);
  changed_.emit();
}

void WorkspaceSession::cancelEditing() {
  editing_.reset();
  changed_.emit();
}

// --- the run --------------------------------------------------------------------------------------

void WorkspaceSession::start(const OperationType& type, std::vector<InputFile> inputs, const OperationConfig* config) {
  outputs_.clear();
  activeName_ = type.info().displayName;
  auto context = std::make_shared<LocalContext>(std::ssize(inputs), outputDirectory_);
  progress_ = ProgressMirror::of(context->progress(), surroundings_.queue);
  const auto completion = [weak = std::weak_ptr(self_)](const RunOutcome& outcome) {
    if (const auto self = weak.lock()) (*self)->finishRun(outcome);
  };
  const OperationRunner runner(surroundings_.queue);
  run_.emplace(config == nullptr
                   ? runner.run(type, std::move(inputs), std::move(context), completion)
                   : runner.runConfigured(type, std::move(inputs), *config, std::move(context), completion));
  changed_.emit();
}

void WorkspaceSession::finishRun(const RunOutcome& outcome) {
  progress_.reset();
  run_.reset();
  if (const OperationResult* const result = outcome.resultIfAny()) outputs_ = result->outputs;
  const auto banner = afterRunBanner(activeName_, outcome);
  activeName_.clear();
  surroundings_.banners.post(banner.style, banner.message);
  changed_.emit();
}

void WorkspaceSession::cancelRun() {
  if (run_) run_->context().progress().cancel();
}

// --- pasted images and scans ----------------------------------------------------------------------

void WorkspaceSession::paste() {
  const std::vector<fs::path> files = surroundings_.pasteboard.files();
  if (!files.empty()) {
    ingest(files);
    return;
  }
  const auto image = surroundings_.pasteboard.imageBytes();
  if (!image) {
    warn("Nothing to ingest.");
    return;
  }
  if (!isWholePNG(*image)) {
    surroundings_.banners.post(BannerStyle::error, "Couldn't read the pasted image.");
    return;
  }
  keepPicture("Quirn Pasted", "Pasted", "png", *image);
}

void WorkspaceSession::receive(const Scan& scan) {
  if (isPDF(scan.bytes)) {
    keepPicture("Quirn Scans", "Scan", "pdf", scan.bytes);
    return;
  }
  if (isWholePNG(scan.bytes)) {
    keepPicture("Quirn Scans", "Scan", "png", scan.bytes);
    return;
  }
  surroundings_.banners.post(BannerStyle::error, "Couldn't read the scan.");
}

void WorkspaceSession::keepPicture(std::string_view folder, std::string_view word, std::string_view extension,
                                   std::span<const std::byte> bytes) {
  try {
    ingest({writeDatedFile(surroundings_.temporaryFolder() / folder, word, extension, surroundings_.now(), bytes)});
  } catch (const OperationError& error) {
    surroundings_.banners.post(BannerStyle::error, error.userMessage());
  } catch (const std::system_error&) {  // There is no place for it.
    surroundings_.banners.post(BannerStyle::error, fmt::format("Couldn't write {}.", folder));
  }
}

// --- the output folder ----------------------------------------------------------------------------

void WorkspaceSession::chooseOutputDirectory(const fs::path& folder) {
  outputDirectory_ = located(folder);
  if (!surroundings_.outputDirectoryStore.save(*outputDirectory_)) warn("Couldn't remember the output folder.");
  changed_.emit();
}

void WorkspaceSession::resetOutputDirectory() {
  outputDirectory_.reset();
  if (!surroundings_.outputDirectoryStore.clear()) warn("Couldn't forget the output folder.");
  changed_.emit();
}

std::string WorkspaceSession::outputDirectoryLine() const {
  return outputDirectory_ ? fmt::format("Outputs will save to {}", outputDirectory_->string())
                          : "Outputs will save next to original files.";
}

std::string WorkspaceSession::outputDirectoryLabel() const {
  if (!outputDirectory_) return "Next to original files";
  return outputDirectory_->has_filename() ? outputDirectory_->filename().string() : outputDirectory_->string();
}

}  // namespace quirn
