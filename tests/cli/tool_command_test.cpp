// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/tool_command.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <map>
#include <memory>

#include "workbench/all_text_tools.h"

namespace quirn::cli {
namespace {

struct Outcome {
  int status = 0;
  std::string out;
  std::string error;
};

Outcome run(const ToolArguments& arguments, std::string_view input = "") {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), &std::fclose);
  std::fwrite(input.data(), 1, input.size(), file.get());
  std::rewind(file.get());
  const int before = ::dup(STDIN_FILENO);
  ::dup2(::fileno(file.get()), STDIN_FILENO);
  ::testing::internal::CaptureStdout();
  ::testing::internal::CaptureStderr();
  Outcome outcome;
  outcome.status = toolCommand(arguments);
  outcome.out = ::testing::internal::GetCapturedStdout();
  outcome.error = ::testing::internal::GetCapturedStderr();
  ::dup2(before, STDIN_FILENO);
  ::close(before);
  return outcome;
}

TEST(ToolCommand, dropsTheLineFeedThatTheShellAdds) {
  EXPECT_EQ(run({.tool = "base64"}, "a\n\n").out, "YQo=");
  EXPECT_EQ(run({.tool = "dev.base64", .raw = true}, "a\n\n").out, "YQoK");
  EXPECT_EQ(run({.tool = "html"}, "\xFF<").out, "\uFFFD&lt;");
}

TEST(ToolCommand, anErrorLeavesStandardOutputEmpty) {
  const Outcome outcome = run({.tool = "base64", .settings = {"mode=dec"}}, "!");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.error, "Not valid Base64.\n");
}

TEST(ToolCommand, jsonTellsOutputAndErrorApart) {
  EXPECT_EQ(run({.tool = "sql", .json = true, .sample = true}).out,
            "{\"tool\":\"dev.sql-escape\",\"output\":\"O''Reilly\"}\n");
  EXPECT_EQ(run({.tool = "base64", .settings = {"mode=dec"}, .json = true}, "!").out,
            "{\"tool\":\"dev.base64\",\"error\":{\"kind\":\"textTool\",\"message\":\"Not valid Base64.\"}}\n");
}

TEST(ToolCommand, wrongUseIsRefusedBeforeAnythingRuns) {
  EXPECT_THROW(toolCommand({.tool = "bas64"}), UsageError);
  EXPECT_THROW(toolCommand({.tool = "base64", .settings = {"mode"}}), UsageError);
  EXPECT_THROW(toolCommand({.tool = "uuid", .file = "/dev/null"}), UsageError);
  EXPECT_THROW(toolCommand({.tool = "sql", .file = "/dev/null", .sample = true}), UsageError);
}

TEST(ToolCommand, shortNamesOfSeveralToolsNameThem) {
  std::map<std::string, std::vector<std::string>> named;
  for (const TextTool* tool : allTextTools()) named[tool->shortName].push_back(tool->id);
  for (const auto& [name, ids] : named) {
    if (ids.size() == 1) {
      EXPECT_EQ(toolNamed(name).id, ids.front());
      continue;
    }
    try {
      toolNamed(name);
      ADD_FAILURE() << name;
    } catch (const UsageError& error) {
      for (const std::string& id : ids) EXPECT_THAT(error.what(), ::testing::HasSubstr(id));
    }
  }
}

}  // namespace
}  // namespace quirn::cli
