// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/tar.h"

#include "archive/archive_builders.h"
#include "archive/tar_walk.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

using platform::bytesOf;
using platform::textOf;
using std::chrono::seconds;
using std::chrono::sys_seconds;

constexpr sys_seconds someDay{seconds(1735732800)};

std::string headerOf(std::string_view name, std::uint64_t size = 3, sys_seconds date = someDay) {
  return std::string(textOf(tarHeader(name, size, date, 0644, tarFile)));
}

std::vector<TarEntry> listed(std::string_view tar) {
  return listTarEntries(bytesOf(tar));
}

TEST(TarHeader, IsThatOfTheStandard) {
  // What GNU tar 1.34 makes of such a file with --format=ustar --owner=:0 --group=:0 --numeric-owner --mode=644, but
  // for the two device numbers that it writes as seven digits 0 each, 672 of the checksum.
  std::string expected(512, '\0');
  expected.replace(0, 5, "a.txt");
  expected.replace(100, 7, "0000644");
  expected.replace(108, 7, "0000000");
  expected.replace(116, 7, "0000000");
  expected.replace(124, 11, "00000000003");
  expected.replace(136, 11, "14735227100");
  expected.replace(148, 8, std::string("006757\0 ", 8));
  expected.replace(156, 1, "0");
  expected.replace(257, 8,
                   std::string("ustar\0"
                               "00",
                               8));
  EXPECT_EQ(headerOf("a.txt"), expected);
}

TEST(TarHeader, PutsTheBeginningOfALongNameIntoThePrefix) {
  struct Row {
    std::string what;
    std::string name;
    std::string prefix;
    std::string rest;
  };
  const std::string hundred(100, 'n');
  const std::string umlauts = [] {
    std::string text;
    for (int i = 0; i < 60; ++i) text += "ä";
    return text;
  }();
  const std::vector<Row> rows{
      {"a name that just fits", hundred, "", hundred},
      {"a character more", "x" + hundred, "x", hundred},
      {"more than both hold", run(200, 'p') + hundred, run(155, 'p'), hundred},
      {"sixty characters in more than a hundred bytes", umlauts, "", umlauts.substr(0, 100)},
  };
  for (const Row& row : rows) {
    const std::string header = headerOf(row.name);
    EXPECT_STREQ(header.substr(0, 100).c_str(), row.rest.c_str()) << row.what;
    EXPECT_STREQ(header.substr(345, 155).c_str(), row.prefix.c_str()) << row.what;
  }
}

TEST(TarHeader, GivesSizesInBase256WhereDigitsDoNotDo) {
  EXPECT_EQ(headerOf("a", 077777777777).substr(124, 12), std::string("77777777777\0", 12));
  EXPECT_EQ(headerOf("a", 0100000000000).substr(124, 12), std::string("\x80\0\0\0\0\0\0\x02\0\0\0\0", 12));
  EXPECT_EQ(listed(headerOf("a", ~0ULL)).at(0).size, ~0ULL);
}

TEST(TarHeader, HasNoDateBefore1970) {
  EXPECT_EQ(headerOf("a", 0, sys_seconds(seconds(-5))).substr(136, 12), std::string("00000000000\0", 12));
}

std::string written(const std::vector<std::string>& contents) {
  std::string tar;
  TarWriter writer([&](std::span<const std::byte> bytes) { tar.append(textOf(bytes)); });
  for (const std::string& content : contents) writer.add("f", bytesOf(content), someDay, 0644);
  writer.finish();
  return tar;
}

TEST(TarWriter, PadsToWholeBlocksAndEndsWithTwo) {
  EXPECT_EQ(written({}), run(1024, '\0'));
  EXPECT_EQ(written({""}).size(), 512U + 1024);
  EXPECT_EQ(written({"a"}).size(), 1024U + 1024);
  const std::string block(512, 'b');
  const std::string tar = written({block, "c"});
  EXPECT_EQ(tar.size(), 1024U + 1024 + 1024);
  const std::vector<TarEntry> entries = listed(tar);
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(entries[0].dataOffset, 512);
  EXPECT_EQ(entries[1].dataOffset, 1536);
  EXPECT_EQ(tar.substr(1536, 1), "c");
}

TEST(TarWriter, OnALocationReplacesWhatStandsThere) {
  const TemporaryFolder folder;
  const auto path = folder.file("a.tar", run(9999, 'x'));
  TarWriter(path).finish();
  EXPECT_EQ(contentOf(path), run(1024, '\0'));
  EXPECT_THROW(TarWriter(folder / "no folder" / "b.tar"), TarError);
}

TEST(TarListing, ReadsEveryField) {
  const std::vector<TarEntry> entries = listed(tarOf({{.name = "name", .data = "abc", .prefix = "folder"},
                                                      {.name = "d", .data = "", .type = '5'},
                                                      {.name = "e/", .data = "", .type = '0'},
                                                      {.name = "l", .data = "", .type = '2', .linkName = "target"},
                                                      {.name = "\xFF", .data = ""}}));
  ASSERT_EQ(entries.size(), 5U);
  EXPECT_EQ(entries[0].name, "folder/name");
  EXPECT_EQ(entries[0].size, 3U);
  EXPECT_EQ(entries[0].mode, 0644);
  EXPECT_EQ(entries[0].modified, sys_seconds(seconds(014713421000)));
  EXPECT_FALSE(entries[0].isDirectory);
  EXPECT_TRUE(entries[1].isDirectory);
  EXPECT_TRUE(entries[2].isDirectory);
  EXPECT_EQ(entries[3].typeflag, tarSymbolicLink);
  EXPECT_EQ(entries[3].linkName, "target");
  EXPECT_EQ(entries[4].name, "\uFFFD");
}

TEST(TarListing, EndsSoundly) {
  const std::string one = tarOf({{}});
  const std::string zeros(512, '\0');
  struct Row {
    std::string what;
    std::string tar;
    std::size_t count;
  };
  const std::vector<Row> rows{
      {"nothing", "", 0},
      {"zeros", zeros + zeros, 0},
      {"a lone block of zeros ends it", one + zeros + one, 1},
      {"no end", one + one, 2},
      {"half a header", one + one.substr(0, 511), 1},
      {"an empty name is passed over", tarOf({{.name = ""}, {}}), 1},
      {"only global headers of pax", tarOf({{.type = 'g'}, {.type = 'g'}}), 0},
      {"GNU's long names are passed over", tarOf({{.data = run(600, 'n'), .type = 'L'}, {}}), 1},
      {"a data area that is cut off", one.substr(0, 513), 1},
      {"a size near 2^64", tarOf({{.size = std::string("\x80\0\0\0", 4) + run(8, '\xFF')}, {}}), 1},
      {"a size beyond 2^64", tarOf({{.size = run(12, '\xFF')}, {}}), 1},
      {"a size of spaces", tarOf({{.data = "", .size = "           "}, {}}), 2},
      {"digits between other bytes", tarOf({{.data = run(512, 'x'), .size = " 1 000 "}, {}}), 2},
  };
  for (const Row& row : rows) EXPECT_EQ(listed(row.tar).size(), row.count) << row.what;
}

TEST(TarWalk, GivesTheSameHoweverTheBytesCome) {
  const std::string tar =
      tarOf({{.name = "a", .data = run(700, 'a')}, {.name = "b"}, {.name = "cut", .data = run(600, 'c')}});
  const auto cut = bytesOf(tar).first(tar.size() - 600);
  const auto told = [&](std::size_t mostAtOnce) {
    const TarWalk::Source whole = sourceOver(cut);
    TarWalk walk([&](std::size_t most) { return whole(std::min(most, mostAtOnce)); }, cut.size());
    std::vector<std::string> entries;
    while (const auto entry = walk.next()) {
      const std::string begin(textOf(walk.read(2)));
      entries.push_back(entry->name + (walk.isWhole() ? ":" : " is cut:") + begin +
                        std::string(textOf(walk.readAll())));
    }
    return entries;
  };
  const std::vector<std::string> expected{"a:" + run(700, 'a'), "b:abc", "cut is cut:" + run(424, 'c')};
  for (const std::size_t most : {std::size_t{2}, std::size_t{511}, std::size_t{513}, tar.size()})
    EXPECT_EQ(told(most), expected) << most;
}

TEST(TarWalk, EndsWhereItsSourceDoes) {
  const std::string tar = tarOf({{.name = "a", .data = run(700, 'a')}, {}});
  TarWalk walk(sourceOver(bytesOf(tar).first(600)), tar.size());
  ASSERT_TRUE(walk.next());
  EXPECT_EQ(walk.readAll().size(), 88U);
  EXPECT_FALSE(walk.next());
  EXPECT_FALSE(walk.next());
}

TEST(TarListing, EndsSoundlyWhereverTheArchiveIsCut) {
  const std::string tar = tarOf({{}, {.name = "b", .data = run(700, 'b')}, {.type = 'x'}, {}});
  for (std::size_t size = 0; size <= tar.size(); ++size) {
    for (const TarEntry& entry : listed(tar.substr(0, size))) {
      EXPECT_LE(static_cast<std::size_t>(entry.dataOffset), size);
    }
  }
}

}  // namespace
}  // namespace quirn::tests
