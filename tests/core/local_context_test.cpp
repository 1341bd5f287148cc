// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/local_context.h"

#include <sys/resource.h>
#include <sys/stat.h>

#include "core/safe_path.h"
#include "probes/identity_copy_operation.h"
#include "support/runs.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

OutputFile written(OperationContext& context, const InputFile& input, std::string_view text) {
  return writeTextOutput(context, input, "copy", "txt", text, "Couldn't.");
}

TEST(LocalContext, ShowsNoOutputBeforeItIsPublished) {
  TemporaryFolder folder;
  const InputFile input = inputAt(folder.file("a.txt", "input"));
  const auto context = contextIn();
  const OutputFile output = written(*context, input, "one");
  {
    const auto dropped = context->stage(input, "dropped", "txt");
  }
  EXPECT_EQ(namesIn(folder.path()), std::vector<std::string>{"a.txt"});
  context->publishStaged();
  EXPECT_EQ(contentOf(context->published(output).url), "one");
  context->finish();
  EXPECT_EQ(namesIn(folder.path()), (std::vector<std::string>{"a (copy).txt", "a.txt"}));
}

TEST(LocalContext, TakesTheNextNameWhereAnotherProgramWasFaster) {
  TemporaryFolder folder;
  const InputFile input = inputAt(folder.file("a.txt", "input"));
  const auto context = contextIn();
  const OutputFile output = written(*context, input, "ours");
  folder.file("a (copy).txt", "theirs");
  fs::create_symlink("nowhere", folder / "a (copy) (1).txt");
  context->finish();
  EXPECT_EQ(context->published(output).url, folder / "a (copy) (2).txt");
  EXPECT_EQ(contentOf(folder / "a (copy) (2).txt"), "ours");
  EXPECT_EQ(contentOf(folder / "a (copy).txt"), "theirs");
}

TEST(LocalContext, SaysWhichOutputsDidNotReachTheirFolder) {
  TemporaryFolder folder;
  const InputFile input = inputAt(folder.file("a.txt", "input"));
  const auto context = contextIn(folder.folder("out"));
  const OutputFile lost = written(*context, input, "lost");
  fs::remove(folder / "out");
  context->publishStaged();
  EXPECT_THROW(context->published(lost), OperationError);
}

class LocalContextRuns : public testing::Test {
 protected:
  // Copies `count` files, `perFolder` of them in each folder, beside themselves.
  void expectCopies(int count, int perFolder) {
    std::vector<fs::path> paths;
    for (int i = 0; i < count; ++i)
      paths.push_back(folder_.file(fmt::format("{}/{}.txt", i / perFolder, i), std::to_string(i)));
    const OperationType type = OperationType::of<IdentityCopyOperation>();
    const Ran ran = runOperation(type, takeIn(paths).files, contextIn());
    ASSERT_TRUE(ran.result) << (ran.error ? ran.error->underlying() : ran.fault);
    EXPECT_EQ(ran.result->summary, std::nullopt);
    ASSERT_EQ(std::ssize(ran.result->outputs), count);
    for (const OutputFile& output : ran.result->outputs)
      EXPECT_EQ(contentOf(output.url) + " (copy)", output.url.stem().string());
    EXPECT_EQ(std::ssize(snapshotOf(folder_.path())), 2 * count);
  }

  void SetUp() override { ::getrlimit(RLIMIT_NOFILE, &before_); }
  void TearDown() override { ::setrlimit(RLIMIT_NOFILE, &before_); }
  void allowDescriptors(rlim_t count) {
    const rlimit fewer{count, before_.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &fewer), 0);
  }

 private:
  TemporaryFolder folder_;
  rlimit before_{};
};

TEST_F(LocalContextRuns, PublishHundredsOfOutputsIntoOneFolder) {
  expectCopies(300, 300);
}

TEST_F(LocalContextRuns, PublishIntoHundredsOfFolders) {
  expectCopies(200, 1);
}

TEST_F(LocalContextRuns, PublishMoreOutputsThanTheProcessMayOpenFiles) {
  allowDescriptors(128);
  expectCopies(300, 300);
}

TEST_F(LocalContextRuns, PublishIntoMoreFoldersThanTheProcessMayOpenFiles) {
  allowDescriptors(128);
  expectCopies(150, 1);
}

TEST(LocalContext, OpensNeighboursInsideTheFolderOnly) {
  using enum Neighbour::Place;
  TemporaryFolder folder;
  folder.file("outside.txt", "outside");
  folder.file("in/a.txt", "a");
  folder.file("in/sub/b.txt", "b");
  fs::create_symlink("sub/b.txt", folder / "in/link inside");
  fs::create_symlink("../outside.txt", folder / "in/link outside");
  fs::create_symlink("/", folder / "in/root");
  fs::create_symlink("..", folder / "in/up");
  fs::create_symlink("loop", folder / "in/loop");
  const InputFile list = inputAt(folder.file("in/list.md5", ""));
  struct Row {
    std::string name;
    Neighbour::Place place;
  };
  const std::vector<Row> rows{
      {"a.txt", here},
      {"./sub/../a.txt", here},
      {"sub/b.txt", here},
      {"link inside", here},
      {"../in/a.txt", here},
      {(folder / "in/a.txt").string(), here},
      {"gone.txt", missing},
      {"a.txt/below", missing},
      {"sub/gone/../../gone", missing},
      {"loop", missing},
      {std::string(300, 'n'), missing},
      {"../outside.txt", outside},
      {"sub/../../outside.txt", outside},
      {"/etc/passwd", outside},
      {"link outside", outside},
      {"root/etc/passwd", outside},
      {"up/outside.txt", outside},
      {"../inside.txt", outside},
      {std::string("a.txt\0/../../outside.txt", 24), outside},
  };
  const auto context = contextIn();
  for (const Row& row : rows) EXPECT_EQ(context->openNeighbour(list, row.name).place, row.place) << row.name;
  ASSERT_EQ(::mkfifo((folder / "in/pipe").c_str(), 0600), 0);
  for (const char* name : {"pipe", "sub", "."})
    EXPECT_THROW(context->openNeighbour(list, name), OperationError) << name;
}

TEST(LocalContext, EnumeratesRegularFilesAndFollowsNoLink) {
  TemporaryFolder folder;
  folder.file("in/b/c.txt", "");
  folder.file("in/a.txt", "");
  folder.file("in/.hidden", "");
  // Outputs in the making, perhaps the run's own.
  folder.file("in/.quirn-01234567-89ab-cdef-0123-456789abcdef.partial", "");
  folder.file("in/.quirn-11234567-89ab-cdef-0123-456789abcdef.partial/a.txt", "");
  fs::create_symlink("..", folder / "in/b/up");
  fs::create_symlink("a.txt", folder / "in/link");
  ASSERT_EQ(::mkfifo((folder / "in/pipe").c_str(), 0600), 0);
  std::vector<std::string> names;
  for (const InputFile& file : contextIn()->enumerate(inputAt(folder / "in")))
    names.push_back(file.url.lexically_relative(folder / "in").string());
  EXPECT_EQ(names, (std::vector<std::string>{".hidden", "a.txt", "b/c.txt"}));
  InputFile gone = inputAt(folder / "in");
  gone.url += " gone";
  EXPECT_THROW(contextIn()->enumerate(gone), OperationError);
}

}  // namespace
}  // namespace quirn::tests
