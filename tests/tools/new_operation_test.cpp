// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What "./dev new-operation" writes must compile, or the first thing that a new contributor sees is an error.

#include "support/process.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

void copyTree(const TemporaryFolder& folder) {
  for (const char* const part : {"src", "tests", "tools/new-operation"}) {
    fs::create_directories((folder / part).parent_path());
    fs::copy(sourceFolder() / part, folder / part, fs::copy_options::recursive);
  }
}

Ended newOperation(const TemporaryFolder& folder, const std::vector<std::string>& arguments) {
  std::vector<std::string> words{"tools/new-operation"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  return run({.arguments = words, .folder = folder.path(), .program = "/usr/bin/python3"});
}

Ended compiled(const TemporaryFolder& folder, const fs::path& source) {
  return run({.arguments = {"-std=c++20", "-fsyntax-only", "-DFMT_SHARED", "-Isrc", "-Itests", source},
              .folder = folder.path(),
              .program = "/usr/bin/c++"});
}

TEST(NewOperation, WritesWhatCompiles) {
  const TemporaryFolder folder;
  copyTree(folder);
  const Ended written = newOperation(folder, {"text.count-words", "CountWords", "Count Words", "documents"});
  ASSERT_EQ(written.status, 0) << written.error;
  for (const char* const source : {"src/documents/count_words_operation.cpp", "src/catalog/catalog.cpp",
                                   "tests/documents/count_words_operation_test.cpp", "tests/contract/samples.cpp"}) {
    const Ended ended = compiled(folder, source);
    EXPECT_EQ(ended.status, 0) << source << "\n" << ended.error;
  }
}

TEST(NewOperation, TakesThePlaceOfAnUnbuiltOne) {
  const TemporaryFolder folder;
  copyTree(folder);
  const Ended written = newOperation(folder, {"text.diff", "TextDiff", "Text Diff", "documents"});
  ASSERT_EQ(written.status, 0) << written.error;
  EXPECT_THAT(contentOf(folder / "src/catalog/catalog.cpp"), testing::HasSubstr("    built<TextDiffOperation>(),\n"));
  EXPECT_THAT(contentOf(folder / "src/catalog/unbuilt.cpp"), testing::Not(testing::HasSubstr("text.diff")));
}

}  // namespace
}  // namespace quirn::tests
