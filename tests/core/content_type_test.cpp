// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/content_type.h"

#include <gtest/gtest.h>

#include <vector>

#include "core/registry.h"
#include "platform/content_type.h"

namespace quirn::tests {
namespace {

using enum ContentKind;

TEST(ContentType, KindsAreWhatAPersonCallsTheFile) {
  struct Row {
    const char* name;
    std::vector<ContentKind> kinds;
  };
  const Row rows[] = {
      {"a.pdf", {pdf}},
      {"A.PDF", {pdf}},
      {"a.heic", {image}},
      {"a.svg", {image}},
      {"a.cr2", {image}},
      {"a.mov", {movie, video}},
      {"a.mkv", {movie, video}},
      {"a.mxf", {movie, video}},
      {"a.rm", {movie, video}},
      {"a.ogv", {movie, video}},
      {"a.ogg", {audio}},
      {"a.mka", {audio}},
      {"a.m4a", {audio}},
      {"a.caf", {audio}},
      {"a.m3u8", {}},  // a list of addresses
      {"a.zip", {archive}},
      {"a.jar", {archive}},
      {"a.cbz", {archive}},
      {"a.tar", {archive}},
      {"a.tar.gz", {archive, gzip}},
      {"a.txt.gz", {archive, gzip}},
      {"a.tar.zst", {archive}},
      {"a.7z", {archive}},
      {"a.rar", {archive}},
      {"a.xz", {archive}},
      {"a.iso", {archive}},
      {"a.aar", {archive}},
      {"a.svgz", {image, gzip}},
      {"a.docx", {}},  // ZIP inside, a document to everybody
      {"a.odt", {}},
      {"a.epub", {}},
      {"a.kmz", {}},
      {"a.ts", {}},  // a program or a translation, by its name alone
      {"a.csv", {}},
      {"a", {}},
  };
  for (const Row& row : rows) {
    const ContentType type(platform::mimeTypeOfName(row.name));
    std::vector<ContentKind> kinds;
    for (const ContentKind kind : {pdf, image, movie, video, audio, archive, gzip}) {
      if (type.conformsTo(kind)) kinds.push_back(kind);
    }
    EXPECT_EQ(kinds, row.kinds) << row.name << " is " << type.mimeType();
  }
}

TEST(DominantCategory, IsThatOfMostFiles) {
  using Category = std::optional<OperationCategory>;
  const std::pair<std::vector<const char*>, Category> rows[] = {
      {{"a.pdf", "b.pdf", "c.txt"}, OperationCategory::pdf},
      {{"a.pdf", "b.jpg", "c.png"}, OperationCategory::image},
      {{"a.mp4", "b.mkv", "c.mp3", "d.txt", "e.txt", "f.txt"}, OperationCategory::video},
      {{"a.mp3"}, OperationCategory::audio},
      {{"a.zip", "b.gz", "c.pdf"}, OperationCategory::archive},
      {{"a.txt", "b.csv", "c.docx"}, std::nullopt},
      {{}, std::nullopt},
  };
  for (const auto& [names, category] : rows) {
    std::vector<InputFile> inputs;
    for (const char* name : names)
      inputs.push_back(
          {.id = {}, .url = name, .contentType = ContentType(platform::mimeTypeOfName(name)), .bookmark = {}});
    EXPECT_EQ(dominantCategory(inputs), category) << fmt::format("{}", fmt::join(names, " "));
  }
}

}  // namespace
}  // namespace quirn::tests
