// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/operation_search.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "catalog/catalog.h"

namespace quirn::tests {
namespace {

const OperationSearch& search() {
  static const OperationRegistry registry = [] {
    OperationRegistry filled;
    registerAllOperations(filled);
    return filled;
  }();
  static const OperationSearch index(registry);
  return index;
}

std::vector<std::string_view> found(std::string_view text, std::span<const InputFile> inputs = {}) {
  std::vector<std::string_view> ids;
  for (const OperationType* type : search().find(text, inputs)) ids.push_back(type->info().operationID);
  return ids;
}

TEST(OperationSearch, PutsFirstWhatThePersonMeans) {
  const std::pair<const char*, const char*> rows[] = {
      {"jpg to pdf", "image.to-pdf"},
      {"unzip", "archive.zip-extract"},
      {"sha256", "text.hash-files"},
      {"make smaller pdf", "pdf.compress"},
      {"heic", "image.heic-to-jpg"},
      {"HEIC → JPG", "image.heic-to-jpg"},
      {"pdf.merge", "pdf.merge"},
      {"merge", "pdf.merge"},
      {"combine pdfs", "pdf.merge"},
      {"mp4 to gif", "video.gif"},
      {"mp3 to wav", "audio.convert"},
      {"word to pdf", "office.document-convert"},
      {"excel to csv", "office.xlsx-csv"},
      {"remove metadata from photo", "image.strip-metadata"},
      {"extract zip", "archive.zip-extract"},
      {"shrnk video", "video.compress"},
      {"pasword generator", "dev.password"},
      {"resise image", "image.resize"},
      {"MERGE   Pdfs!", "pdf.merge"},
  };
  for (const auto& [text, operation] : rows) {
    const auto ids = found(text);
    ASSERT_FALSE(ids.empty()) << text;
    EXPECT_EQ(ids.front(), operation) << text;
  }
}

TEST(OperationSearch, AMisspeltWordFindsWhatTheRightOneFinds) {
  EXPECT_EQ(found("comprss"), found("compress"));
  EXPECT_TRUE(found("comprss").front().ends_with(".compress"));
}

TEST(OperationSearch, WhatRunsOnTheFilesAtHandComesFirstAmongEquals) {
  const InputFile file{.id = {}, .url = "/a.iso", .contentType = ContentType("application/x-cd-image"), .bookmark = {}};
  const auto duplicate = found("duplicate", std::span(&file, 1));
  ASSERT_FALSE(duplicate.empty());
  EXPECT_EQ(duplicate.front(), "stub.identity");
  // But files at hand don't make one thing mean another.
  EXPECT_EQ(found("unzip", std::span(&file, 1)).front(), "archive.zip-extract");
}

TEST(OperationSearch, ListsEverythingForNothingAndNothingForNonsense) {
  EXPECT_EQ(found("").size(), 183U);
  EXPECT_EQ(found(" → / ").size(), 183U);
  EXPECT_TRUE(found("zzzzzzzz").empty());
  EXPECT_TRUE(found("\xFF\xFE\xE2").empty());
  EXPECT_LE(found(std::string(1'000'000, 'a')).size(), 183U);
}

}  // namespace
}  // namespace quirn::tests
