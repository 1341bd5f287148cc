// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "desktop/completions.h"
#include "desktop/desktop_entry.h"
#include "desktop/file_types.h"
#include "desktop/man_page.h"
#include "desktop/service_menus.h"
#include "support/process.h"
#include "support/runs.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

using desktop::GeneratedFile;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const GeneratedFile& at(const std::vector<GeneratedFile>& files, const std::string& path) {
  return *std::ranges::find(files, path, &GeneratedFile::path);
}

TEST(DesktopEntry, OffersTheActionsAndTheTypesThatOperationsAreMadeFor) {
  const std::string text = desktop::desktopEntry(catalog()).text;
  EXPECT_THAT(text, HasSubstr("Actions=merge-pdfs;split-pdf;compress-pdf;convert-image;transcribe;open-in-quirn;"));
  EXPECT_THAT(text, HasSubstr("x-scheme-handler/quirn"));
  EXPECT_THAT(text, HasSubstr("application/pdf"));
  EXPECT_THAT(text, HasSubstr("[Desktop Action merge-pdfs]\nName=Merge PDFs\nExec=quirn open --operation pdf.merge\n"));
}

TEST(FileTypes, AreThoseThatTheOperationItselfTakes) {
  EXPECT_THAT(desktop::typesOf(*catalog().byID("pdf.merge")), ElementsAre("application/pdf"));
  EXPECT_TRUE(desktop::typesOf(*catalog().byID("text.hash-files")).empty()) << "every type is no type";
}

TEST(ServiceMenus, GiveEachFileManagerItsOwnForm) {
  const auto files = desktop::serviceMenus(catalog());
  EXPECT_THAT(at(files, "kio/servicemenus/quirn-pdf-merge.desktop").text,
              HasSubstr("MimeType=application/pdf;\nActions=quirn;\nX-KDE-Submenu=Quirn\n"));
  EXPECT_THAT(at(files, "nemo/actions/quirn-pdf-merge.nemo_action").text,
              HasSubstr("Exec=quirn open --operation pdf.merge %F\n"));
  EXPECT_THAT(at(files, "Thunar/sendto/quirn.desktop").text, HasSubstr("Exec=quirn open %F\n"));
  EXPECT_EQ(at(files, "quirn/file-managers/nautilus/Open in Quirn").kind, GeneratedFile::Kind::script);
}

// What bash completes for these words, the last of them being typed.
std::vector<std::string> completed(const std::string& words) {
  const TemporaryFolder folder;
  const auto files = desktop::completions(catalog());
  const auto script = folder.file("quirn.bash", at(files, "bash-completion/completions/quirn").text);
  const std::string line = "source '" + script.string() + "'; compopt() { :; }; COMP_WORDS=(quirn " + words +
                           "); COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _quirn; printf '%s\\n' \"${COMPREPLY[@]}\"";
  const Ended ended = run({.arguments = {"-c", line}, .folder = folder.path(), .program = "/bin/bash"});
  EXPECT_EQ(ended.error, "");
  std::vector<std::string> answers;
  std::size_t begin = 0;
  for (std::size_t end = 0; (end = ended.output.find('\n', begin)) != std::string::npos; begin = end + 1)
    answers.push_back(ended.output.substr(begin, end - begin));
  return answers;
}

TEST(Completions, BashCompletesCommandsOperationsAndSettings) {
  EXPECT_THAT(completed("sug"), ElementsAre("suggest"));
  EXPECT_THAT(completed("run text.ha"), ElementsAre("text.hash-files"));
  EXPECT_THAT(completed("tool dev.base6"), ElementsAre("dev.base64"));
  EXPECT_THAT(completed("run text.hash-files --set algorithm=sha2"), ElementsAre("algorithm=sha256"));
  EXPECT_THAT(completed("run text.hash-files --set algorithm = sha2"), ElementsAre("sha256"));
  EXPECT_THAT(completed("list --category vi"), ElementsAre("video"));
  EXPECT_THAT(completed("run text.hash-files --qu"), ElementsAre("--quiet"));
}

TEST(ManPage, NamesEveryCommandAndOperation) {
  const std::string text = desktop::manPage(catalog()).text;
  EXPECT_THAT(text, HasSubstr(".SS \"quirn run OPERATION [FILE]...\""));
  EXPECT_THAT(text, HasSubstr("text.hash\\-files"));
  EXPECT_EQ(desktop::troff(".a\\b-c\n'd"), "\\&.a\\eb\\-c\n\\&'d");
}

}  // namespace
}  // namespace quirn::tests
