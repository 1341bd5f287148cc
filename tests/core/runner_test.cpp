// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/runner.h"

#include <thread>

#include "support/runs.h"

namespace quirn::tests {
namespace {

struct WordConfig : OperationConfig {
  std::string word = "default";
  static Panel panel() { return {field<&WordConfig::word>("Word").fromInput()}; }
};

// Says its setting as its summary, on the thread that the run has; throws what the setting asks
// for.
class WordOperation final : public ConfigurableOperation<WordConfig> {
 public:
  static constexpr Placement placement = Placement::inProcess;

  static const OperationInfo& info() {
    static const OperationInfo info{"test.word", "Word", "icon", OperationCategory::text, {}, "It."};
    return info;
  }
  static const AcceptedInputs& accepts() {
    static const AcceptedInputs accepts{.atLeast = 0};
    return accepts;
  }
  static WordConfig configurationFor(std::span<const InputFile> inputs, OperationContext&) {
    if (inputs.empty()) throw OperationError::unsupportedInput("Nothing to read.");
    WordConfig config;
    config.word = inputs.front().fileName();
    return config;
  }
  static inline Meeting* meeting = nullptr;
  static inline std::thread::id thread;

 protected:
  OperationResult runWith(std::span<const InputFile>, const WordConfig& config,
                          OperationContext& context) const override {
    thread = std::this_thread::get_id();
    if (meeting != nullptr && !meeting->waitFor(1)) ADD_FAILURE() << "nobody came";
    if (config.word == "engine") throw OperationError::engineFailed("test", "detail");
    if (config.word == "fault") throw std::runtime_error("a fault of ours");
    context.checkCancellation();
    return {.outputs = {}, .summary = config.word, .failures = {}};
  }
};

class Runner : public testing::Test {
 protected:
  const OperationType type = OperationType::of<WordOperation>();
  WordConfig config;
};

TEST_F(Runner, DeliversOnTheInterfaceThreadWhatRanOnAnother) {
  platform::PlainMainQueue queue;
  std::optional<std::string> summary;
  std::thread::id delivered;
  const quirn::Run run = OperationRunner(queue).run(type, {}, std::nullopt, [&](const RunOutcome& outcome) {
    delivered = std::this_thread::get_id();
    summary = outcome.result().summary;
  });
  queue.runUntil([&] { return summary.has_value(); }, std::chrono::milliseconds(100), [] {});
  EXPECT_EQ(summary, "default");
  EXPECT_EQ(delivered, std::this_thread::get_id());
  EXPECT_NE(WordOperation::thread, delivered);
}

TEST_F(Runner, PassesErrorsUnchanged) {
  config.word = "engine";
  const Ran ran = runOperation(type, {}, contextIn(), &config);
  ASSERT_TRUE(ran.error);
  EXPECT_EQ(ran.error->userMessage(), "Something went wrong during test.");
  EXPECT_EQ(ran.error->underlying(), "detail");
  config.word = "fault";
  EXPECT_EQ(runOperation(type, {}, contextIn(), &config).fault, "a fault of ours");
}

TEST_F(Runner, RefusesTheSettingsOfAnotherOperation) {
  struct Other : OperationConfig {};
  const Other other;
  const Ran ran = runOperation(type, {}, contextIn(), &other);
  ASSERT_TRUE(ran.error) << ran.fault;
  EXPECT_EQ(ran.error->userMessage(), "Quirn can't run this on these files. Bad config.");
  EXPECT_TRUE(type.configPanel(other).items().empty());
}

TEST_F(Runner, RunsWithTheSettingsThatItWasGivenWhateverBecomesOfThem) {
  Meeting changed;
  WordOperation::meeting = &changed;
  platform::PlainMainQueue queue;
  std::optional<std::string> summary;
  config.word = "before";
  const quirn::Run run = OperationRunner(queue).runConfigured(
      type, {}, config, contextIn(), [&](const RunOutcome& outcome) { summary = outcome.result().summary; });
  config.word = "after";
  changed.arrive();
  queue.runUntil([&] { return summary.has_value(); }, std::chrono::milliseconds(100), [] {});
  WordOperation::meeting = nullptr;
  EXPECT_EQ(summary, "before");
}

TEST_F(Runner, BeginsSettingsWithWhatTheInputsSayOrElseTheDefaults) {
  const auto wordFor = [&](const std::vector<std::string>& names, bool isCancelled) {
    platform::PlainMainQueue queue;
    std::optional<std::string> word;
    const auto context = contextIn();
    if (isCancelled) context->progress().cancel();
    const quirn::Run run = OperationRunner(queue).configure(
        type, inputsNamed(names), context, [&](const std::unique_ptr<OperationConfig>& read) {
          word = read ? dynamic_cast<const WordConfig&>(*read).word : "none";
        });
    queue.runUntil([&] { return word.has_value(); }, std::chrono::milliseconds(100), [] {});
    return *word;
  };
  EXPECT_EQ(wordFor({"report"}, false), "report");
  EXPECT_EQ(wordFor({}, false), "default") << "what can't be read is told by the run";
  EXPECT_EQ(wordFor({"report"}, true), "none");
}

TEST_F(Runner, IsCancelledThroughItsProgressAndByBeingDropped) {
  Meeting go;
  WordOperation::meeting = &go;
  platform::PlainMainQueue queue;
  const auto context = contextIn();
  {
    const quirn::Run run = OperationRunner(queue).run(type, {}, context, [](const RunOutcome&) {});
    context->progress().cancel();
    EXPECT_TRUE(context->stopToken().stop_requested());
    go.arrive();
  }
  WordOperation::meeting = nullptr;
  const auto dropped = contextIn();
  {
    const quirn::Run run = OperationRunner(queue).run(type, {}, dropped, [](const RunOutcome&) {});
  }
  EXPECT_TRUE(dropped->progress().isCancelled());
}

TEST(Progress, CallsItsHandlerOnceHoweverLateItComes) {
  Progress progress(0);
  EXPECT_EQ(progress.fractionCompleted(), 0);
  progress.setTotalUnitCount(4);
  progress.complete(5);
  EXPECT_EQ(progress.fractionCompleted(), 1);
  EXPECT_TRUE(progress.isFinished());
  int calls = 0;
  progress.setCancellationHandler([&] { ++calls; });
  progress.cancel();
  progress.cancel();
  EXPECT_EQ(calls, 1);
  progress.setCancellationHandler([&] { ++calls; });
  EXPECT_EQ(calls, 2);
}

}  // namespace
}  // namespace quirn::tests
