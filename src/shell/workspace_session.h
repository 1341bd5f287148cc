// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The state behind the window: the files that were gathered, the folder for outputs, the open editor
// or panel, and the run. Whatever a person starts passes attemptRun(), the one gate before the
// runner. The window shows this and adds nothing of its own. docs/session.md tells the rules.

#pragma once

#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "core/banner_center.h"
#include "core/notifications.h"
#include "core/output_directory_store.h"
#include "core/progress_mirror.h"
#include "core/registry.h"
#include "core/runner.h"
#include "shell/file_intake.h"
#include "shell/pasteboard.h"
#include "shell/scan.h"

namespace quirn {

// An open editor.
struct EditingSession {
  platform::Uuid id;
  const OperationType* opType = nullptr;
  std::vector<InputFile> inputs;
};

// An open panel; its controls edit `config` in place.
struct ConfiguringOperation {
  platform::Uuid id;
  const OperationType* opType = nullptr;
  std::unique_ptr<OperationConfig> config;
  std::vector<InputFile> inputs;
};

// Belongs to the interface thread.
class WorkspaceSession {
 public:
  struct Surroundings {
    // All references outlive the session; `queue` and `registry` also its last run.
    const OperationRegistry& registry;
    platform::MainQueue& queue;
    BannerCenter& banners;
    EventBus& events;
    const Pasteboard& pasteboard;
    OutputDirectoryStore outputDirectoryStore;
    // Where pasted images and scans go; throws std::system_error if there is no such place.
    std::function<std::filesystem::path()> temporaryFolder;
    std::function<std::chrono::system_clock::time_point()> now = &std::chrono::system_clock::now;
  };

  // Answers "quirn.openURLs", "quirn.runOpOnURLs", "quirn.paste" and "quirn.scanReceived" from now.
  explicit WorkspaceSession(Surroundings surroundings);
  WorkspaceSession(const WorkspaceSession&) = delete;
  WorkspaceSession& operator=(const WorkspaceSession&) = delete;
  // Cancels a run that is under way and waits for its end.
  ~WorkspaceSession() = default;

  const std::vector<InputFile>& inputs() const { return inputs_; }
  // The operations for the inputs, as the window lists them.
  std::vector<const OperationType*> suggestions() const;
  // Of the last run; empty from the next one on.
  const std::vector<OutputFile>& outputs() const { return outputs_; }
  const EditingSession* editing() const { return editing_ ? &*editing_ : nullptr; }
  const ConfiguringOperation* configuring() const { return configuring_ ? &*configuring_ : nullptr; }

  // True while a run is under way; then the next two are set.
  bool isActive() const { return run_.has_value(); }
  const std::string& activeName() const { return activeName_; }  // "Hash Files"
  const std::shared_ptr<ProgressMirror>& progress() const { return progress_; }
  std::string activeStatus() const { return run_ ? run_->context().currentStatus() : ""; }
  void cancelRun();

  // Adds files and folders; one that is there already is not added again.
  void ingest(const std::vector<std::filesystem::path>& locations);
  void remove(std::span<const platform::Uuid> ids);
  // Also takes the outputs of the last run off the list.
  void clear();
  // Makes these, such as outputs of the last run, the input list. Those that can't be read are told; if
  // none can, the list stays as it is.
  void replaceInputs(const std::vector<std::filesystem::path>& locations);

  // The gate: opens the editor or the panel of the operation, starts the run, or refuses with a
  // banner and leaves everything as it was.
  void attemptRun(const OperationType& type, std::vector<InputFile> inputs);
  // A request from outside the window: takes the files in and passes them to the gate.
  void attemptRun(const QuirnRunRequest& request);

  // The run button of the open panel.
  void runConfigured();
  void closePanel();
  // The two callbacks of the open editor.
  void completeEditing(std::vector<OutputFile> outputs);
  void cancelEditing();

  // Files or an image from the pasteboard.
  void paste();
  void receive(const Scan& scan);

  const std::optional<std::filesystem::path>& outputDirectory() const { return outputDirectory_; }
  void chooseOutputDirectory(const std::filesystem::path& folder);
  void resetOutputDirectory();
  // "Outputs will save to /sums", "Outputs will save next to original files."
  std::string outputDirectoryLine() const;
  // "sums", "Next to original files"
  std::string outputDirectoryLabel() const;

  // Emitted when any of the above has changed, but for the status and the progress of a run.
  Signal<>& changed() { return changed_; }

 private:
  void configure(const OperationType& type, std::vector<InputFile> inputs);
  void warn(std::string message);
  void add(std::vector<InputFile> files);
  void tellUnreadable(const std::vector<FileFailure>& unreadable);
  void runOnTaken(const OperationType& type, const Intake& intake);
  bool refuses(const OperationType& type, std::span<const InputFile> inputs);
  void start(const OperationType& type, std::vector<InputFile> inputs, const OperationConfig* config);
  void finishRun(const RunOutcome& outcome);
  void keepPicture(std::string_view folder, std::string_view word, std::string_view extension,
                   std::span<const std::byte> bytes);

  Surroundings surroundings_;
  std::vector<InputFile> inputs_;
  std::vector<OutputFile> outputs_;
  std::optional<std::filesystem::path> outputDirectory_;
  std::optional<EditingSession> editing_;
  std::optional<ConfiguringOperation> configuring_;
  std::string activeName_;
  std::shared_ptr<ProgressMirror> progress_;
  Signal<> changed_;
  std::vector<Subscription> subscriptions_;
  FileIntake intake_;
  // What a run posts holds this weakly: it may arrive when the session is gone.
  std::shared_ptr<WorkspaceSession*> self_ = std::make_shared<WorkspaceSession*>(this);
  std::optional<Run> run_;  // the last member, so that it ends first
};

}  // namespace quirn
