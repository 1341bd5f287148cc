// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "catalog/unbuilt.h"
#include "core/local_context.h"
#include "core/reflection.h"
#include "core/shortcuts.h"
#include "support/runs.h"

namespace quirn::tests {
namespace {

// FNV-1a over every row, "id|name|category|alias; alias\n". The number was computed from the table that the catalog
// was agreed on with, by another program.
TEST(Catalog, EveryRowIsInItsPlaceAsAgreed) {
  std::uint64_t checksum = 0xcbf29ce484222325;
  for (const OperationType& type : catalog().operations()) {
    const OperationInfo& info = type.info();
    const std::string row = fmt::format("{}|{}|{}|{}\n", info.operationID, info.displayName,
                                        enumeratorName(info.category), fmt::join(info.aliases, "; "));
    for (const char byte : row) checksum = (checksum ^ static_cast<unsigned char>(byte)) * 0x100000001b3;
  }
  EXPECT_EQ(catalog().operations().size(), 183U);
  EXPECT_EQ(checksum, 0x20f845d3edca3ae5U);
}

TEST(Catalog, EveryCategoryHasItsOperations) {
  std::map<std::string_view, int> counts;
  for (const OperationType& type : catalog().operations()) ++counts[enumeratorName(type.info().category)];
  const std::map<std::string_view, int> agreed{{"dev", 35},     {"pdf", 27},    {"image", 27}, {"video", 23},
                                               {"audio", 14},   {"archive", 9}, {"text", 8},   {"utility", 6},
                                               {"office", 6},   {"ai", 6},      {"time", 5},   {"subtitles", 4},
                                               {"contacts", 4}, {"color", 3},   {"geo", 3},    {"vector", 3}};
  EXPECT_EQ(counts, agreed);
}

TEST(Catalog, NoUnbuiltOperationRunsAndNoneIsLeftOver) {
  const auto& types = catalog().operations();
  const auto unbuilt = std::ranges::count_if(types, [](const OperationType& type) { return !type.isBuilt(); });
  EXPECT_EQ(static_cast<std::size_t>(unbuilt), unbuiltOperationCount());
  const InputFile file{.id = {}, .url = "/a.pdf", .contentType = ContentType("application/pdf"), .bookmark = {}};
  for (const OperationType& type : types) {
    EXPECT_FALSE(type.info().iconName.empty()) << type.info().operationID;
    if (type.isBuilt()) continue;
    EXPECT_FALSE(type.canRun(std::span(&file, 1))) << type.info().operationID;
    EXPECT_FALSE(type.canRun({})) << type.info().operationID;
  }
  EXPECT_THROW(unbuiltOperation("pdf.nothing"), std::logic_error);
}

TEST(Catalog, TheProbeStartsAProgramAndReportsIt) {
  const OperationType& probe = *catalog().byID("dmg.probe");
  EXPECT_TRUE(probe.canRun({}));
  LocalContext context(0, std::nullopt);
  const OperationResult result = probe.make()->run({}, context);
  EXPECT_EQ(result.summary, "/bin/echo ran.");
  EXPECT_TRUE(result.outputs.empty());
  EXPECT_TRUE(context.progress().isFinished());
}

TEST(Shortcuts, EachActionLeadsToAnOperationOfTheCatalog) {
  std::vector<std::string_view> titles;
  for (const Shortcut& shortcut : QuirnShortcuts::all()) {
    titles.push_back(shortcut.title);
    if (shortcut.operationID) {
      EXPECT_NE(catalog().byID(*shortcut.operationID), nullptr) << shortcut.title;
    }
    for (const std::string_view phrase : shortcut.phrases)
      EXPECT_NE(phrase.find("{app}"), std::string_view::npos) << phrase;
  }
  const std::vector<std::string_view> inOrder{"Merge PDFs",    "Split PDF",  "Compress PDF",
                                              "Convert Image", "Transcribe", "Open in Quirn"};
  EXPECT_EQ(titles, inOrder);
}

}  // namespace
}  // namespace quirn::tests
