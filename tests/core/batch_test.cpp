// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/batch.h"

#include <sched.h>

#include <atomic>
#include <stdexcept>

#include "platform/task_pool.h"
#include "support/runs.h"

namespace quirn::tests {
namespace {

OutputFile outputOf(const InputFile& input) {
  return {platform::Uuid::random(), input.url, OutputRole::primary};
}

std::vector<std::string> numberedNames(int count) {
  std::vector<std::string> names;
  for (int i = 0; i < count; ++i) names.push_back(std::to_string(i));
  return names;
}

// Leaves this thread so many processors, for as long as it lives.
class Processors {
 public:
  explicit Processors(int count) {
    platform::TaskPool::shared().submit([] {});  // The pool keeps all of them.
    ::sched_getaffinity(0, sizeof before_, &before_);
    cpu_set_t fewer;
    CPU_ZERO(&fewer);
    for (std::size_t cpu = 0; cpu < CPU_SETSIZE && CPU_COUNT(&fewer) < count; ++cpu) {
      if (CPU_ISSET(cpu, &before_)) CPU_SET(cpu, &fewer);
    }
    ::sched_setaffinity(0, sizeof fewer, &fewer);
    areThere_ = CPU_COUNT(&fewer) == count;
  }
  ~Processors() { ::sched_setaffinity(0, sizeof before_, &before_); }
  Processors(const Processors&) = delete;
  Processors& operator=(const Processors&) = delete;
  bool areThere() const { return areThere_; }

 private:
  cpu_set_t before_{};
  bool areThere_ = false;
};

// Counts those that are in it at once.
class Crowd {
 public:
  class Stay {
   public:
    explicit Stay(Crowd& crowd) : crowd_(crowd) {
      int most = crowd_.most_;
      for (const int now = ++crowd_.now_; now > most && !crowd_.most_.compare_exchange_weak(most, now);) {
      }
    }
    ~Stay() { --crowd_.now_; }
    Stay(const Stay&) = delete;
    Stay& operator=(const Stay&) = delete;

   private:
    Crowd& crowd_;
  };
  int most() const { return most_; }

 private:
  std::atomic<int> now_ = 0;
  std::atomic<int> most_ = 0;
};

TEST(Batch, RunsAsManyWorkersAsProcessorsAndNeverMore) {
  const int processors = platform::activeProcessorCount();
  BareContext context;
  Crowd crowd;
  Meeting meeting;
  const auto result = runBatch(inputsNamed(numberedNames(100)), context, [&](const InputFile& file) {
    const Crowd::Stay stay(crowd);
    meeting.arrive();
    // The first go on only when there is one on every processor.
    EXPECT_TRUE(meeting.waitFor(processors)) << "a processor stood idle";
    return outputOf(file);
  });
  EXPECT_EQ(result.outputs.size(), 100);
  EXPECT_EQ(crowd.most(), processors);
  EXPECT_EQ(context.progress().completedUnitCount(), 100);
  EXPECT_EQ(context.progress().totalUnitCount(), 100);
}

TEST(Batch, KeepsToTheProcessorsThatItMayUse) {
  const Processors one(1);
  BareContext context;
  Crowd crowd;
  std::vector<std::string> order;
  runBatch(inputsNamed(numberedNames(20)), context, [&](const InputFile& file) {
    const Crowd::Stay stay(crowd);
    order.push_back(file.fileName());
    return outputOf(file);
  });
  EXPECT_EQ(crowd.most(), 1);
  EXPECT_EQ(order, numberedNames(20)) << "files begin in the order of the inputs";
}

TEST(Batch, BeginsTheNextFileWhileALongOneStillRuns) {
  const Processors two(2);
  if (!two.areThere()) GTEST_SKIP() << "one processor runs one file at a time";
  BareContext context;
  Meeting others;
  const auto result = runBatch(inputsNamed(numberedNames(10)), context, [&](const InputFile& file) {
    if (file.fileName() == "0") {
      EXPECT_TRUE(others.waitFor(9)) << "the window waits for its slowest file";
    } else {
      others.arrive();
    }
    return outputOf(file);
  });
  EXPECT_EQ(result.outputs.front().url, "/nowhere/1") << "outputs stand in order of finishing";
}

TEST(Batch, ThrowsTheOperationErrorThatCameFirstWhereNothingWasMade) {
  const Processors two(2);
  if (!two.areThere()) GTEST_SKIP() << "one processor finishes files in their order";
  BareContext context;
  Meeting fourth;
  try {
    runBatch(inputsNamed({"first", "second", "third", "fourth"}), context, [&](const InputFile& file) -> OutputFile {
      // The fourth begins when the second and the third have ended.
      if (file.fileName() == "first" && !fourth.waitFor(1)) ADD_FAILURE();
      if (file.fileName() == "second") throw std::runtime_error("a fault of ours");
      if (file.fileName() == "fourth") fourth.arrive();
      throw OperationError::unsupportedInput(file.fileName() + ".");
    });
    ADD_FAILURE() << "nothing was made, and nothing was thrown";
  } catch (const OperationError& error) {
    EXPECT_EQ(error.userMessage(), "Quirn can't run this on these files. third.");
  }
}

struct SummaryRow {
  const char* loss;
  std::vector<std::string> good;
  std::vector<std::string> bad;
  std::optional<std::string> summary;
};

TEST(Batch, SummarisesWhatFailed) {
  const Processors one(1);
  const std::vector<SummaryRow> rows{
      {"a summary where all went well is noise", {"x"}, {}, std::nullopt},
      {"one bad file goes unmentioned", {"x", "y"}, {"a"}, "Created 2 of 3. 1 couldn’t be processed: a."},
      {"three bad files end in “+0 more”", {"x"}, {"a", "b", "c"}, "Created 1 of 4. 3 couldn’t be processed: a, b, c."},
      {"five bad files fill the screen",
       {"x", "y"},
       {"a", "b", "c", "d", "e"},
       "Created 2 of 7. 5 couldn’t be processed: a, b, c, +2 more."},
  };
  for (const SummaryRow& row : rows) {
    SCOPED_TRACE(row.loss);
    BareContext context;
    std::vector<std::string> names = row.bad;
    names.insert(names.end(), row.good.begin(), row.good.end());
    const auto result = runBatch(inputsNamed(names), context, [&](const InputFile& file) {
      if (file.fileName() >= "x") return outputOf(file);
      if (file.fileName() == "a") throw OperationError::readFailed(file.url, "detail");
      throw 7;  // NOLINT: what no code of ours throws
    });
    EXPECT_EQ(result.summary, row.summary);
    ASSERT_EQ(result.failures.size(), row.bad.size());
    for (std::size_t i = 0; i < row.bad.size(); ++i) {
      EXPECT_EQ(result.failures[i].fileName, row.bad[i]);
      EXPECT_EQ(result.failures[i].message, i == 0 ? "Couldn't read a." : "Couldn’t process this file.");
    }
    EXPECT_EQ(context.progress().completedUnitCount(), std::ssize(names));
  }
}

TEST(Batch, BlamesTheBatchWhereNoFileHasAnErrorOfItsOwn) {
  const std::vector<std::pair<std::vector<std::string>, std::string>> rows{{{}, "Couldn’t process these files."},
                                                                           {{"a", "b"}, "Couldn’t process this file."}};
  for (const auto& [names, underlying] : rows) {
    BareContext context;
    try {
      runBatch(inputsNamed(names), context,
               [](const InputFile&) -> OutputFile { throw std::runtime_error("a fault of ours"); });
      ADD_FAILURE() << "nothing was thrown";
    } catch (const OperationError& error) {
      EXPECT_EQ(error.userMessage(), "Something went wrong during batch.");
      EXPECT_EQ(error.underlying(), underlying);
    }
    EXPECT_EQ(context.progress().totalUnitCount(), std::max<std::int64_t>(1, std::ssize(names)));
  }
}

TEST(Batch, StopsForWhateverCancelsIt) {
  using Cancel = std::function<void(OperationContext&)>;
  const std::vector<std::pair<const char*, Cancel>> rows{
      {"the person", [](OperationContext& context) { context.requestStop(); }},
      {"a worker that noticed", [](OperationContext&) { throw CancellationError(); }},
      {"an operation", [](OperationContext&) { throw OperationError::cancelled(); }},
  };
  for (const auto& [name, cancel] : rows) {
    SCOPED_TRACE(name);
    const Processors one(1);
    BareContext context;
    int begun = 0;
    bool cancelled = false;
    try {
      runBatch(inputsNamed(numberedNames(50)), context, [&](const InputFile& file) {
        if (++begun == 3) cancel(context);
        return outputOf(file);
      });
    } catch (const CancellationError&) {
      cancelled = true;
    } catch (const OperationError& error) {
      cancelled = error.kind() == OperationError::Kind::cancelled;
    }
    EXPECT_TRUE(cancelled);
    EXPECT_EQ(begun, 3) << "files were begun after the run was stopped";
    EXPECT_TRUE(context.stopToken().stop_requested()) << "the other workers go on";
  }
}

// The sizes of the groups in which so many files of a size each are handed out, one child at work.
std::vector<std::size_t> groupsOf(int count, std::int64_t size, const Grouping& grouping) {
  const Processors one(1);
  BareContext context;
  std::vector<InputFile> inputs = inputsNamed(numberedNames(count));
  for (InputFile& input : inputs) input.size = size;
  std::vector<std::size_t> groups;
  const auto worker = [&](std::span<const InputFile> files, const auto& report) {
    groups.push_back(files.size());
    for (const InputFile& file : files) report([&] { return outputOf(file); });
  };
  const auto result = runBatch(inputs, context, worker, grouping);
  EXPECT_EQ(std::ssize(result.outputs), count);
  for (std::size_t i = 0; i < result.outputs.size(); ++i) EXPECT_EQ(result.outputs[i].url, inputs[i].url) << i;
  return groups;
}

TEST(Batch, HandsOutMoreFilesAtOnceWhileTheyAreSmallAndQuick) {
  using std::chrono::hours;
  struct Row {
    const char* loss;
    int count;
    std::int64_t size;
    Grouping grouping;
    std::vector<std::size_t> groups;
  };
  const std::vector<Row> rows{
      {"what a file takes is not known before one is done", 20, 1, {.mostFiles = 8, .time = hours(1)}, {1, 2, 4, 8, 5}},
      {"slow files wait for one another", 4, 1, {.time = std::chrono::nanoseconds(0)}, {1, 1, 1, 1}},
      {"large files wait for one another", 4, 600, {.mostBytes = 1000, .time = hours(1)}, {1, 1, 1, 1}},
      {"one file that is larger than a group is never begun",
       3,
       5000,
       {.mostBytes = 1000, .time = hours(1)},
       {1, 1, 1}},
      {"as many as are small together are begun alone", 8, 400, {.mostBytes = 1000, .time = hours(1)}, {1, 2, 2, 2, 1}},
  };
  for (const Row& row : rows) EXPECT_EQ(groupsOf(row.count, row.size, row.grouping), row.groups) << row.loss;
}

TEST(Batch, LosesNoMoreThanTheGroupThatAFaultEnds) {
  const Processors one(1);
  BareContext context;
  const auto worker = [](std::span<const InputFile> files, const auto& report) {
    report([&] { return outputOf(files.front()); });
    if (files.size() == 4) throw std::runtime_error("a fault of ours");
    for (const InputFile& file : files.subspan(1)) report([&] { return outputOf(file); });
  };
  const auto result = runBatch(inputsNamed(numberedNames(10)), context, worker, {.time = std::chrono::hours(1)});
  EXPECT_EQ(result.outputs.size(), 7U);  // of 1, 2, 4 and 3 files
  EXPECT_EQ(result.failures.size(), 3U);
  EXPECT_EQ(context.progress().completedUnitCount(), 10);
}

// Everything but the file "lost" reaches the disk.
class LosingContext final : public BareContext {
 public:
  OutputFile published(OutputFile output) override {
    if (output.url.filename() == "lost") throw OperationError::writeFailed(output.url, "full");
    output.url += " (1)";
    return output;
  }
};

TEST(Batch, CountsAnOutputThatDidNotReachTheDiskAsAFailureOfItsInput) {
  LosingContext context;
  const auto result = runBatch(inputsNamed({"lost", "kept"}), context, &outputOf);
  ASSERT_EQ(result.outputs.size(), 1);
  EXPECT_EQ(result.outputs.front().url, "/nowhere/kept (1)") << "the name that it has by now";
  EXPECT_EQ(result.summary, "Created 1 of 2. 1 couldn’t be processed: lost.");
  EXPECT_EQ(result.failures.front().message, "Couldn't write lost.");
}

}  // namespace
}  // namespace quirn::tests
