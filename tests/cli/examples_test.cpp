// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The commands that README and the help show, run as they stand there.

#include <sstream>

#include "support/pdf_builder.h"
#include "support/process.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

std::vector<std::string> wordsOf(const std::string& line) {
  std::istringstream stream(line.substr(0, line.find(" #")));
  std::vector<std::string> words;
  for (std::string word; stream >> word;) words.push_back(word);
  return words;
}

// The lines of the code blocks, indented or fenced, that call the program and nothing else.
std::vector<std::string> examplesIn(const std::string& text) {
  std::istringstream stream(text);
  std::vector<std::string> examples;
  for (std::string line; std::getline(stream, line);) {
    const std::size_t begin = line.find_first_not_of(" $");
    std::string_view command = std::string_view(line).substr(std::min(begin, line.size()));
    if (command.starts_with("Example: ")) command.remove_prefix(9);
    if (!command.starts_with("quirn ")) continue;
    const bool isForAShell = command.find_first_of("|<>*$;&`\"'\\[…") != std::string_view::npos;
    if (!isForAShell) examples.emplace_back(command);
  }
  return examples;
}

// Makes the files that the words name, and keeps outputs in the folder.
void prepare(const TemporaryFolder& folder, std::vector<std::string>& words) {
  const bool namesFirst = words.front() == "run" || words.front() == "tool";
  const bool takesFiles = namesFirst || words.front() == "suggest";
  for (std::size_t i = namesFirst ? 2 : 1; takesFiles && i < words.size(); ++i) {
    if (words[i] == "--out") {
      words[++i] = "out";
    } else if (words[i] == "--set") {
      ++i;
    } else if (!words[i].starts_with('-')) {
      words[i] = fs::path(words[i]).relative_path().lexically_normal();
      folder.file(words[i],
                  words[i].ends_with(".pdf") ? pdfOfPages(2) : "d41d8cd98f00b204e9800998ecf8427e  example.txt\n");
    }
  }
}

void expectToWork(const std::string& text) {
  for (const std::string& example : examplesIn(text)) {
    TemporaryFolder folder;
    std::vector<std::string> words = wordsOf(example);
    words.erase(words.begin());
    prepare(folder, words);
    const Ended ended = quirn(folder.path(), words);
    EXPECT_EQ(ended.status, 0) << example << "\n" << ended.error;
  }
}

TEST(Examples, InTheHelpWork) {
  const std::string help = quirn("/", {"help", "run"}).output;
  EXPECT_FALSE(examplesIn(help).empty());
  expectToWork(help);
}

TEST(Examples, InReadmeWork) {
  const fs::path readme = sourceFolder() / "README.md";
  if (!fs::exists(readme)) GTEST_SKIP() << "there is no README.md";
  expectToWork(contentOf(readme));
}

}  // namespace
}  // namespace quirn::tests
