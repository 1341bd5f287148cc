// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shell/command_text.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/process.h"
#include "support/runs.h"
#include "support/temporary_folder.h"
#include "workbench/all_text_tools.h"

namespace quirn::tests {
namespace {

TEST(CommandText, TheShellReadsEveryWordBack) {
  for (const std::string word :
       {"plain-1.txt", "a b", "it's", "$HOME `x` \\ \"y\"", "*?[a]", "new\nline", "", "~", "#1"}) {
    const Ended ended = run({.arguments = {"-c", "printf %s " + shellQuoted(word)}, .program = "/bin/sh"});
    EXPECT_EQ(ended.output, word);
  }
}

TEST(CommandText, RunInAShellItDoesWhatTheWindowWould) {
  const TemporaryFolder folder;
  const OperationType& type = *catalog().byID("text.hash-files");
  const auto config = type.defaultConfig();
  type.configPanel(*config).set(*config, "algorithm", "md5");
  const std::vector inputs{inputAt(folder.file("it's $1.bin", "abc"))};
  std::string command = runCommandText(type, config.get(), inputs, folder / "out put");
  ASSERT_TRUE(command.starts_with("quirn run text.hash-files --set algorithm=md5 --out '"));
  command.replace(0, 5, "\"$QUIRN\"");
  const Ended ended =
      run({.arguments = {"-c", command}, .environment = {{"QUIRN", quirnProgram().string()}}, .program = "/bin/sh"});
  EXPECT_EQ(ended.status, 0) << ended.error;
  EXPECT_THAT(contentOf(folder / "out put" / "it's $1 (checksums).txt"),
              testing::HasSubstr("900150983cd24fb0d6963f7d28e17f72"));  // RFC 1321, A.5
}

TEST(CommandText, DefaultsAreNotSpelledOut) {
  const OperationType& type = *catalog().byID("text.hash-files");
  EXPECT_EQ(runCommandText(type, type.defaultConfig().get(), inputsNamed({"a.bin"}), {}),
            "quirn run text.hash-files " + inputsNamed({"a.bin"}).front().url.string());
}

TEST(CommandText, AToolsOptionsAndItsSeed) {
  const TextTool& tool = *textToolByID("dev.base64");
  TextToolOptions options = defaultOptions(tool);
  EXPECT_EQ(toolCommandText(tool, options, {}), "quirn tool dev.base64");
  options.values["mode"] = "Decode";
  EXPECT_EQ(toolCommandText(tool, options, "/a b.txt"), "quirn tool dev.base64 --set mode=Decode '/a b.txt'");
}

}  // namespace
}  // namespace quirn::tests
