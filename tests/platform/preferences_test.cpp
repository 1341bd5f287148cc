// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/preferences.h"

#include <gtest/gtest.h>
#include <sys/stat.h>

#include "core/output_directory_store.h"
#include "platform/content_type.h"
#include "shell/workspace.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

TEST(Preferences, ADamagedFileIsAsGoodAsNone) {
  const TemporaryFolder folder;
  const std::pair<const char*, std::string> rows[] = {
      {"empty", ""},
      {"noise", std::string("\xFF\0\x01=\n===\n", 10)},
      {"without a value", "outputDirectoryBookmark"},
      {"a relative folder", "outputDirectoryBookmark=.\n"},
      {"a folder that is gone", "outputDirectoryBookmark=/gone/for/good\n"},
      {"far too large", "outputDirectoryBookmark=" + std::string(2 << 20, '/') + "\n"},
  };
  for (const auto& [damage, content] : rows) {
    const OutputDirectoryStore store(platform::Preferences::at(folder.write("quirn.conf", content)));
    EXPECT_EQ(store.load(), std::nullopt) << damage;
    EXPECT_TRUE(store.save(folder.path())) << damage;
    EXPECT_EQ(store.load(), folder.path()) << damage;
  }
}

TEST(Preferences, WhatIsNoFileHoldsNothingUp) {
  const TemporaryFolder folder;
  const fs::path pipe = folder.path() / "pipe";
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_EQ(platform::Preferences::at(pipe).value("key"), std::nullopt);
  EXPECT_EQ(platform::Preferences::at(folder.path()).value("key"), std::nullopt);
  EXPECT_FALSE(platform::Preferences::at(folder.path()).setValue("key", "value"));
  EXPECT_FALSE(platform::Preferences::at("/proc/quirn/quirn.conf").setValue("key", "value"));
}

TEST(Preferences, AValueComesBackAsItWent) {
  const TemporaryFolder folder;
  const auto preferences = platform::Preferences::at(folder.path() / "new" / "quirn.conf");
  const std::string odd = "a=b\\n\n line two \\ ";
  EXPECT_TRUE(preferences.setValue("key", odd));
  EXPECT_EQ(preferences.value("key"), odd);
  EXPECT_TRUE(preferences.setValue("key", std::nullopt));
  EXPECT_EQ(preferences.value("key"), std::nullopt);
}

TEST(ContentTypeOfFile, IsReadFromTheFileWhereTheNameLeavesItOpen) {
  const TemporaryFolder folder;
  std::string film;
  for (int packet = 0; packet < 5; ++packet) film.append("G@\0\x10", 4).append(184, '\0');
  EXPECT_EQ(platform::mimeTypeOfFile(folder.write("film.ts", film)), "video/mp2t");
  EXPECT_EQ(platform::mimeTypeOfFile(folder.write("download", "%PDF-1.7\n")), "application/pdf");
  EXPECT_EQ(platform::mimeTypeOfFile(folder.write("named.txt", "%PDF-1.7\n")), "text/plain");
  EXPECT_EQ(platform::mimeTypeOfFile(folder.write("empty", "")), "application/octet-stream");
  EXPECT_EQ(platform::mimeTypeOfFile("/gone/empty"), "application/octet-stream");
}

}  // namespace
}  // namespace quirn::tests
