// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/refusal.h"

#include <gtest/gtest.h>

#include "shell/workspace.h"
#include "support/runs.h"

namespace quirn::tests {
namespace {

bool isPdf(const InputFile& input) {
  return hasExtension(input, {"pdf"});
}

struct Row {
  const char* losing;  // what a user would lose
  AcceptedInputs accepts;
  std::vector<std::string> names;
  const char* sentence;
};

TEST(Refusal, SaysInOneLineWhatIsNeeded) {
  const AcceptedInputs twoPdfs{.singular = "PDF", .plural = "PDFs", .atLeast = 2, .matches = &isPdf};
  const AcceptedInputs onePdf{.singular = "PDF", .plural = "PDFs", .atMost = 1, .matches = &isPdf};
  for (const Row& row : {
           Row{"what fits needs no excuse", twoPdfs, {"a.pdf", "b.pdf"}, ""},
           Row{"too few", twoPdfs, {"a.pdf"}, "Needs two or more PDFs."},
           Row{"none at all", twoPdfs, {}, "Needs two or more PDFs."},
           Row{"too many", onePdf, {"a.pdf", "b.pdf"}, "Needs one PDF."},
           Row{"the odd one is named", twoPdfs, {"a.pdf", "b.txt"}, "Needs two or more PDFs; “b.txt” isn’t one."},
           Row{"a tool for typed text", {.atLeast = 0, .atMost = 0}, {"a.txt"}, "Works without files."},
       }) {
    const auto type = fakeType("fake.refusing", "Refusing", row.accepts, {});
    EXPECT_EQ(refusal(type, inputsNamed(row.names)), row.sentence) << row.losing;
  }
}

TEST(Refusal, AFolderIsToldApart) {
  auto inputs = inputsNamed({"stuff"});
  inputs.front().isDirectory = true;
  EXPECT_EQ(refusal(fakeType("fake.refusing", "Refusing", {}, {}), inputs),
            "Needs one or more files; “stuff” is a folder.");
}

}  // namespace
}  // namespace quirn::tests
