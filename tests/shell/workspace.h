// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A session with everything around it, and operations that do as the test says.

#pragma once

#include <fmt/format.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <semaphore>

#include "core/batch.h"
#include "shell/workspace_session.h"
#include "support/temporary_folder.h"

namespace quirn::tests {

struct FakePasteboard final : Pasteboard {
  std::vector<std::filesystem::path> copiedFiles;
  std::optional<std::vector<std::byte>> image;

  std::vector<std::filesystem::path> files() const override { return copiedFiles; }
  std::optional<std::vector<std::byte>> imageBytes() const override { return image; }
};

// An operation whose value calls `work`.
class FakeOperation final : public QuirnOperation {
 public:
  using Work = std::function<OperationResult(std::span<const InputFile>, OperationContext&)>;
  explicit FakeOperation(Work work) : work_(std::move(work)) {}
  OperationResult run(std::span<const InputFile> inputs, OperationContext& context) const override {
    return work_(inputs, context);
  }

 private:
  Work work_;
};

inline OperationType fakeType(std::string_view id, std::string_view name, AcceptedInputs accepts,
                              FakeOperation::Work work, bool isInteractive = false) {
  return OperationType::of(
      {.info = {.operationID = id, .displayName = name, .iconName = "doc", .category = OperationCategory::utility},
       .accepts = std::move(accepts),
       .make = [work] { return std::make_unique<FakeOperation>(work); },
       .isInteractive = isInteractive});
}

struct LoudnessConfig : OperationConfig {
  std::int64_t loudness = 5;
  static Panel panel() { return {stepper<&LoudnessConfig::loudness>("Loudness", {.legal = {1, 10}})}; }
};

class LoudnessOperation final : public ConfigurableOperation<LoudnessConfig> {
 public:
  static constexpr Placement placement = Placement::inProcess;

  static const OperationInfo& info() {
    static const OperationInfo info{.operationID = "fake.loudness",
                                    .displayName = "Loudness",
                                    .iconName = "doc",
                                    .category = OperationCategory::audio};
    return info;
  }
  static const AcceptedInputs& accepts() {
    static const AcceptedInputs accepts;
    return accepts;
  }

 protected:
  OperationResult runWith(std::span<const InputFile>, const LoudnessConfig& config, OperationContext&) const override {
    return {.summary = fmt::format("Loudness {}", config.loudness)};
  }
};

// One window's worth. `proceed` lets each run of "fake.slow" go on.
class Workspace {
 public:
  Workspace() {
    const auto done = [](std::span<const InputFile>, OperationContext&) { return OperationResult(); };
    registry.registerOperation(fakeType("fake.slow", "Slow", {}, [this](auto, OperationContext& context) {
      while (!proceed.try_acquire_for(std::chrono::milliseconds(1))) context.checkCancellation();
      return OperationResult();
    }));
    registry.registerOperation(fakeType("fake.generator", "Generator", {.atLeast = 0, .atMost = 0}, done));
    registry.registerOperation(fakeType(
        "fake.text", "Text Only", {.matches = [](const InputFile& input) { return hasExtension(input, {"txt"}); }},
        [this](std::span<const InputFile> inputs, OperationContext&) {
          for (const InputFile& input : inputs) ranOn.push_back(input.fileName());
          return OperationResult();
        }));
    registry.registerOperation(fakeType("fake.editor", "Editor", {}, done, true));
    registry.registerOperation(OperationType::of<LoudnessOperation>());
    registry.registerOperation(OperationType::unbuilt({.operationID = "fake.unbuilt",
                                                       .displayName = "Unbuilt",
                                                       .iconName = "doc",
                                                       .category = OperationCategory::pdf}));
    session.emplace(WorkspaceSession::Surroundings{
        .registry = registry,
        .queue = queue,
        .banners = banners,
        .events = events,
        .pasteboard = pasteboard,
        .outputDirectoryStore = OutputDirectoryStore(platform::Preferences::at(preferences)),
        .temporaryFolder = [this] { return folder.path(); },
        .now = [this] { return now; }});
  }

  const OperationType& type(std::string_view id) const { return *registry.byID(id); }

  // Turns the queue until `condition`; half a minute at most.
  void wait(const std::function<bool()>& condition) {
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    queue.runUntil([&] { return condition() || std::chrono::steady_clock::now() > deadline; },
                   std::chrono::milliseconds(5), [] {});
    EXPECT_TRUE(condition()) << "in half a minute";
  }

  void ingest(const std::vector<std::filesystem::path>& files) {
    const std::size_t expected = session->inputs().size() + files.size();
    session->ingest(files);
    wait([&] { return session->inputs().size() == expected; });
  }
  // The text of the banner that is posted next.
  std::string nextBanner(const std::function<void()>& action) {
    const std::size_t before = posted.size();
    action();
    wait([&] { return posted.size() > before; });
    return posted.size() > before ? posted.back() : "";
  }

  TemporaryFolder folder;
  std::filesystem::path preferences = folder.path() / "preferences" / "quirn.conf";
  std::vector<std::string> ranOn;  // names, of the last runs of "fake.text"
  std::counting_semaphore<> proceed{0};
  OperationRegistry registry;
  platform::PlainMainQueue queue;
  std::vector<std::string> posted;
  BannerCenter banners{queue, [this](const std::string& message) { posted.push_back(message); }};
  EventBus events;
  FakePasteboard pasteboard;
  std::chrono::system_clock::time_point now{std::chrono::seconds(1'700'000'000)};
  std::optional<WorkspaceSession> session;
};

}  // namespace quirn::tests
