// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What holds for every operation, whatever it does. An operation that is new in the catalog is
// tested here without a line of its own, as soon as it has a sample.

#include <set>

#include "contract/samples.h"
#include "core/reflection.h"
#include "support/runs.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

const fs::file_time_type someDate = fs::file_time_type::clock::now() - std::chrono::hours(1000);

// The settings that the sample is processed with.
std::unique_ptr<OperationConfig> settingsFor(const OperationType& type, const Sample& sample) {
  auto config = type.isConfigurable() ? type.defaultConfig() : std::make_unique<OperationConfig>();
  const Panel panel = type.configPanel(*config);
  for (const auto& [key, value] : sample.settings) panel.set(*config, key, value);
  return config;
}

// The sample of an operation on the disk, in a folder of its own, with an empty one for outputs.
class Bench {
 public:
  using Change = std::function<SampleFile(SampleFile)>;

  explicit Bench(const Sample& sample, const Change& change = {}) : sample_(sample) {
    for (SampleFile file : sample.files) {
      if (file.isInput && change) file = change(file);
      const fs::path path = folder_.file(fs::path("in") / file.name, file.content);
      fs::last_write_time(path, someDate);  // it may go into outputs
      if (file.isInput) inputs_.push_back(path);
    }
    before_ = snapshotOf(folder_ / "in");
    outputs_ = folder_.folder("out");
  }

  std::vector<InputFile> inputs() const { return takeIn(inputs_).files; }
  const fs::path& outputFolder() const { return outputs_; }

  Ran run(const OperationType& type, const OperationConfig* config = nullptr) const {
    return run(type, inputs(), contextIn(outputs_), config);
  }

  Ran run(const OperationType& type, std::vector<InputFile> inputs, const std::shared_ptr<OperationContext>& context,
          const OperationConfig* config = nullptr) const {
    const auto ofSample = settingsFor(type, sample_);
    if (config == nullptr && type.isConfigurable()) config = ofSample.get();
    return runOperation(type, std::move(inputs), context, config);
  }

  // The inputs are what they were, and nothing is in the output folder but what the run tells of.
  void expectTidyAfter(const Ran& ran) const {
    EXPECT_EQ(ran.fault, "");
    EXPECT_EQ(snapshotOf(folder_ / "in"), before_) << "an input was changed";
    std::vector<std::string> told;
    if (ran.result) {
      for (const OutputFile& output : ran.result->outputs) {
        EXPECT_EQ(output.url.parent_path(), outputs_);
        told.push_back(output.url.filename().string());
      }
    }
    std::ranges::sort(told);
    EXPECT_EQ(namesIn(outputs_), told);
  }

 private:
  const Sample& sample_;
  TemporaryFolder folder_;
  std::vector<fs::path> inputs_;
  std::map<std::string, std::string> before_;
  fs::path outputs_;
};

class OperationContract : public testing::TestWithParam<const OperationType*> {
 protected:
  const OperationType& type() const { return *GetParam(); }

  void SetUp() override {
    sample_ = sampleFor(type().info().operationID);
    ASSERT_NE(sample_, nullptr) << "add a sample for " << type().info().operationID << " to contract/samples.cpp";
  }
  const Sample& sample() const { return *sample_; }

  // Bytes that the operation can't be expected to process: it does, or it says so.
  void expectSoundEndOn(const Bench& bench) const {
    const Ran ran = bench.run(type());
    EXPECT_TRUE(ran.result || ran.error) << ran.fault;
    bench.expectTidyAfter(ran);
  }

  void expectSuccessOn(const Bench& bench, const OperationConfig* config = nullptr) const {
    ASSERT_TRUE(type().canRun(bench.inputs()));
    const Ran ran = bench.run(type(), config);
    ASSERT_TRUE(ran.result) << (ran.error ? ran.error->userMessage() : ran.fault);
    EXPECT_FALSE(ran.result->outputs.empty());
    EXPECT_TRUE(ran.result->failures.empty());
    bench.expectTidyAfter(ran);
  }

 private:
  const Sample* sample_ = nullptr;
};

TEST_P(OperationContract, ProcessesItsSample) {
  const Bench bench(sample());
  expectSuccessOn(bench);
}

TEST_P(OperationContract, GivesTheSameBytesTwice) {
  if (!sample().isDeterministic) GTEST_SKIP() << "it makes something new each time";
  const Bench first(sample());
  const Bench second(sample());
  expectSuccessOn(first);
  expectSuccessOn(second);
  EXPECT_EQ(snapshotOf(first.outputFolder()), snapshotOf(second.outputFolder()));
}

TEST_P(OperationContract, TakesFilesOfAnyName) {
  for (const std::string stem : {"two words ", "-leading-dash", "line\nbreak", "Ελλάδα 日本", "\xFF\xC3 not UTF-8",
                                 "back\\slash", "percent %s {}", "..dots"}) {
    SCOPED_TRACE(stem);
    int number = 0;
    const Bench bench(sample(), [&](SampleFile file) {
      const std::string count = number++ == 0 ? "" : std::to_string(number);
      file.name = stem + count + fs::path(file.name).extension().string();
      return file;
    });
    expectSuccessOn(bench);
  }
}

TEST_P(OperationContract, EndsSoundlyOnBytesThatAreNotWhatTheNameSays) {
  const std::string other(
      "\x7F"
      "ELF\0\xFF\xFE<html>\r\n{\"a\":[1,",
      23);
  const std::vector<std::pair<std::string, Bench::Change>> rows{
      {"an empty file", [](SampleFile file) { return SampleFile{file.name, ""}; }},
      {"a truncated file",
       [](SampleFile file) { return SampleFile{file.name, file.content.substr(0, file.content.size() / 2)}; }},
      {"a file of the wrong kind", [&](SampleFile file) { return SampleFile{file.name, other}; }},
      {"a file of zeros", [](SampleFile file) { return SampleFile{file.name, std::string(5000, '\0')}; }},
  };
  for (const auto& [name, change] : rows) {
    SCOPED_TRACE(name);
    expectSoundEndOn(Bench(sample(), change));
  }
}

TEST_P(OperationContract, SaysThatItCouldNotWriteWhereNothingCanBeWritten) {
  const Bench bench(sample());
  TemporaryFolder folder;
  const fs::path file = folder.file("a file", "content");
  for (const fs::path& unwritable : {file / "below it", file, fs::path("/proc/no-such-folder")}) {
    SCOPED_TRACE(unwritable);
    const Ran ran = bench.run(type(), bench.inputs(), contextIn(unwritable));
    ASSERT_TRUE(ran.error) << ran.fault;
    EXPECT_EQ(ran.error->kind(), OperationError::Kind::writeFailed);
    bench.expectTidyAfter(ran);
  }
  EXPECT_EQ(contentOf(file), "content");
}

TEST_P(OperationContract, LeavesNothingWhenItIsCancelledAtTheFirstTick) {
  const Bench bench(sample());
  const auto context = contextIn(bench.outputFolder());
  context->progress().cancel();
  const Ran ran = bench.run(type(), bench.inputs(), context);
  EXPECT_TRUE(ran.cancelled) << ran.fault;
  bench.expectTidyAfter(ran);
}

TEST_P(OperationContract, RefusesInputsThatAreGone) {
  const Bench bench(sample());
  std::vector<InputFile> inputs = bench.inputs();
  for (InputFile& input : inputs) input.url += ".gone";
  const Ran ran = bench.run(type(), inputs, contextIn(bench.outputFolder()));
  ASSERT_TRUE(ran.error) << ran.fault;
  if (!sample().passesOverUnreadable) {
    EXPECT_EQ(ran.error->kind(), OperationError::Kind::readFailed);
  }
  bench.expectTidyAfter(ran);
}

std::vector<std::string> acceptedValues(const Control& control) {
  std::vector<std::string> values;
  switch (control.kind) {
    case Control::Kind::toggle: return {"true", "false"};
    case Control::Kind::choice:
      for (const Control::Option& option : control.options) values.push_back(option.name);
      return values;
    case Control::Kind::stepper:
    case Control::Kind::slider:
      return {fmt::format("{}", control.legal.lowest), fmt::format("{}", control.legal.highest)};
    case Control::Kind::field:
    case Control::Kind::secret:
    case Control::Kind::newSecret: return {"", "a = b, “c”\n"};
    case Control::Kind::list:
      return {"[]",
              fmt::format(R"([{{"{}":"a = b, “c”\n;","{}":-3}}])", control.texts.textKey, control.texts.numberKey)};
  }
  return values;
}

std::vector<std::string> refusedValues(const Control& control) {
  switch (control.kind) {
    case Control::Kind::field:
    case Control::Kind::secret:
    case Control::Kind::newSecret: return {};
    case Control::Kind::toggle:
    case Control::Kind::choice: return {"", "no such value", "True "};
    case Control::Kind::list: return {"many", "[1]", "[{}]", "[", "{}"};
    default:
      return {"",
              "many",
              "1 ",
              "nan",
              fmt::format("{}", control.legal.highest + 1),
              fmt::format("{}", control.legal.lowest - 1)};
  }
}

TEST_P(OperationContract, TakesEveryAcceptedSettingAndGivesItBack) {
  const Panel panel = type().defaultPanel();
  for (const Control& control : panel.controls()) {
    for (const std::string& value : acceptedValues(control)) {
      SCOPED_TRACE(control.key + "=" + value);
      const auto config = settingsFor(type(), sample());
      panel.set(*config, control.key, value);
      EXPECT_EQ(control.read(*config), value);
      EXPECT_EQ(control.read(*type().copyOf(*config)), value);
      // Values that are text or a number may be nonsense together; a choice never is.
      if (control.kind == Control::Kind::choice) expectSuccessOn(Bench(sample()), config.get());
    }
    for (const std::string& value : refusedValues(control)) {
      const auto config = type().defaultConfig();
      EXPECT_THROW(panel.set(*config, control.key, value), SettingError) << control.key << "=" << value;
      EXPECT_EQ(panel.values(*config).size(), panel.controls().size());
    }
  }
}

bool isID(std::string_view text) {
  const std::size_t dot = text.find('.');
  const auto isWord = [](std::string_view word) {
    return !word.empty() && word.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-") == std::string_view::npos;
  };
  return dot != std::string_view::npos && isWord(text.substr(0, dot)) && isWord(text.substr(dot + 1));
}

TEST(OperationDescriptions, AreCompleteAndInTheHouseStyle) {
  std::set<std::string_view> identifiers;
  for (const OperationType& type : catalog().operations()) {
    const OperationInfo& info = type.info();
    SCOPED_TRACE(info.operationID);
    EXPECT_TRUE(isID(info.operationID)) << "scripts write it: lower case, category.verb-object";
    EXPECT_TRUE(identifiers.insert(info.operationID).second);
    EXPECT_EQ(catalog().byID(info.operationID), &type);
    EXPECT_FALSE(info.displayName.empty());
    EXPECT_FALSE(info.iconName.empty());
    const bool isSentence = info.about.ends_with('.') || info.about.ends_with(".)");
    EXPECT_TRUE(!type.isBuilt() || isSentence) << "what the person gets, as a sentence";
    EXPECT_FALSE(info.aliases.empty()) << "nobody finds it";
    for (const std::string_view alias : info.aliases) EXPECT_EQ(alias, lowerCased(alias)) << "searches are lower case";
  }
}

TEST(OperationDescriptions, HaveControlsThatAcceptTheirOwnDefaults) {
  for (const OperationType& type : catalog().operations()) {
    SCOPED_TRACE(type.info().operationID);
    std::set<std::string> keys;
    const Panel panel = type.defaultPanel();
    for (const Control& control : panel.controls()) {
      SCOPED_TRACE(control.key);
      EXPECT_TRUE(keys.insert(control.key).second) << "two controls of one key";
      EXPECT_FALSE(control.label.empty());
      EXPECT_LE(control.legal.lowest, control.suggested.lowest);
      EXPECT_LE(control.suggested.lowest, control.suggested.highest);
      EXPECT_LE(control.suggested.highest, control.legal.highest);
      const auto config = type.defaultConfig();
      EXPECT_NO_THROW(panel.set(*config, control.key, control.read(*config)));
      if (control.isShown) control.isShown(*config);
    }
  }
}

TEST(OperationDescriptions, OfInteractiveOperationsSayThatTheyRunInAnEditor) {
  for (const OperationType& type : catalog().operations()) {
    if (!type.isBuilt() || !type.isInteractive()) continue;
    const Ran ran = runOperation(type, {}, contextIn());
    ASSERT_TRUE(ran.error) << type.info().operationID;
    EXPECT_EQ(ran.error->userMessage(),
              fmt::format("Quirn can't run this on these files. {} is interactive.", type.info().displayName));
  }
}

bool runsByItself(const OperationType& type) {
  return type.isBuilt() && !type.isInteractive();
}

bool takesFiles(const OperationType& type) {
  return type.accepts().atMost > 0;
}

TEST(OperationDescriptions, RunWithoutFilesWhereNoneAreTaken) {
  for (const OperationType& type : catalog().operations()) {
    if (!runsByItself(type) || takesFiles(type)) continue;
    const Ran ran = runOperation(type, {}, contextIn());
    EXPECT_TRUE(ran.result) << type.info().operationID;
  }
}

std::vector<const OperationType*> runnable() {
  std::vector<const OperationType*> types;
  for (const OperationType& type : catalog().operations()) {
    if (runsByItself(type) && takesFiles(type)) types.push_back(&type);
  }
  return types;
}

INSTANTIATE_TEST_SUITE_P(Catalog, OperationContract, testing::ValuesIn(runnable()), [](const auto& test) {
  std::string name(test.param->info().operationID);
  for (char& character : name)
    if (character == '.' || character == '-') character = '_';
  return name;
});

}  // namespace
}  // namespace quirn::tests
