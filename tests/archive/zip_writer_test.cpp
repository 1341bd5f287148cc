// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/zip_writer.h"

#include "archive/archive_builders.h"
#include "archive/zip_reader.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

using platform::bytesOf;
using platform::textOf;
using std::chrono::sys_days;
using std::chrono::sys_seconds;
using namespace std::chrono_literals;

constexpr sys_seconds someDay = sys_days(2025y / 1 / 1) + 12h;

class WrittenZip {
 public:
  explicit WrittenZip(const std::function<void(ZipWriter&)>& fill) {
    ZipWriter writer([this](std::span<const std::byte> bytes) { bytes_.append(textOf(bytes)); });
    fill(writer);
    writer.finish();
  }

  const std::string& bytes() const { return bytes_; }
  std::vector<ZipFileEntry> entries() const { return listZipEntries(bytesOf(bytes_)); }
  std::string end() const { return bytes_.substr(bytes_.size() - 22); }
  bool hasZip64() const { return bytes_.find("PK\x06\x06") != std::string::npos; }

 private:
  std::string bytes_;
};

WrittenZip zipWith(std::string_view data, std::optional<std::string_view> password = {}) {
  return WrittenZip([&](ZipWriter& writer) { writer.add("a", bytesOf(data), password, someDay, 0100644); });
}

// Whatever time zone the test runs in.
class InUtc : public testing::Test {
 protected:
  void SetUp() override { ::setenv("TZ", "UTC0", 1); }
  void TearDown() override { ::unsetenv("TZ"); }
};

TEST_F(InUtc, ZipWriterWritesEveryByteAsThePublishedFormatHasIt) {
  // Assembled by hand from APPNOTE.TXT 4.3.7, 4.3.12 and 4.3.16.
  const std::string common = le16(0x0800) + le16(0) + le16(12 << 11) + le16(45 << 9 | 1 << 5 | 1) + le32(0x352441C2) +
                             le32(3) + le32(3) + le16(1) + le16(0);
  const std::string local = le32(0x04034B50) + le16(20) + common + "a" + "abc";
  const std::string directory = le32(0x02014B50) + le16(0x0314) + le16(20) + common + le16(0) + le16(0) + le16(0) +
                                le32(0100644ULL << 16) + le32(0) + "a";
  const std::string end =
      le32(0x06054B50) + le16(0) + le16(0) + le16(1) + le16(1) + le32(directory.size()) + le32(local.size()) + le16(0);
  EXPECT_EQ(zipWith("abc").bytes(), local + directory + end);
}

TEST(ZipWriter, StoresWhatDeflateDoesNotShrink) {
  struct Row {
    std::string what;
    std::string data;
    std::uint16_t method;
  };
  const std::vector<Row> rows{{"nothing", "", 0},
                              {"a few bytes", "abc", 0},
                              {"a long run", run(1000, 'x'), 8},
                              {"bytes that are compressed already", noise(100'000), 0}};
  for (const Row& row : rows) {
    const WrittenZip zip = zipWith(row.data);
    const ZipFileEntry entry = zip.entries().at(0);
    EXPECT_EQ(entry.method, row.method) << row.what;
    EXPECT_EQ(entry.uncompressedSize, row.data.size()) << row.what;
    EXPECT_EQ(entry.crc32, crcOf(row.data)) << row.what;
    EXPECT_EQ(textOf(readZipEntry(entry, {}, bytesOf(zip.bytes()))), row.data) << row.what;
  }
}

TEST(ZipWriter, TakesAnEmptyPasswordForNone) {
  EXPECT_EQ(zipWith("abc", "").bytes(), zipWith("abc").bytes());
}

TEST(ZipWriter, WritesEncryptedEntriesAsAe2) {
  const WrittenZip zip = zipWith("abc", "secret");
  const ZipFileEntry entry = zip.entries().at(0);
  EXPECT_TRUE(entry.isEncrypted);
  EXPECT_EQ(entry.method, 99);
  EXPECT_EQ(entry.realMethod, 0);
  EXPECT_EQ(entry.aesStrength, 3);
  EXPECT_EQ(entry.crc32, 0U);
  EXPECT_EQ(entry.compressedSize, 3U + 28U);
  EXPECT_EQ(entry.uncompressedSize, 3U);
  const std::string record = le16(0x9901) + le16(7) + le16(2) + "AE\x03" + le16(0);
  EXPECT_EQ(zip.bytes().substr(30 + 1, 11), record);
  EXPECT_EQ(zip.bytes().substr(0, 10), le32(0x04034B50) + le16(51) + le16(0x0801) + le16(99));
  EXPECT_NE(zip.bytes(), zipWith("abc", "secret").bytes()) << "the salt is another each time";
}

WrittenZip zipOfCount(int count) {
  return WrittenZip([&](ZipWriter& writer) {
    for (int i = 0; i < count; ++i) writer.addPrepared("a", {}, 0, 0, 0, {}, someDay, 0644, false);
  });
}

TEST(ZipWriter, CountsBeyondTheOldFormatInZip64) {
  const WrittenZip most = zipOfCount(65534);
  EXPECT_FALSE(most.hasZip64());
  EXPECT_EQ(most.end().substr(8, 4), le16(65534) + le16(65534));
  const WrittenZip more = zipOfCount(65535);
  EXPECT_TRUE(more.hasZip64());
  EXPECT_EQ(more.end().substr(8, 12), le16(0xFFFF) + le16(0xFFFF) + le32(0xFFFFFFFF) + le32(0xFFFFFFFF));
  EXPECT_EQ(more.entries().size(), 65535U);
}

TEST(ZipWriter, SaysSizesBeyondTheOldFormatInZip64) {
  const auto zipOfSize = [](std::uint64_t size) {
    return WrittenZip([&](ZipWriter& writer) { writer.addPrepared("a", {}, size, 5, 8, {}, someDay, 0644, false); });
  };
  EXPECT_FALSE(zipOfSize(0xFFFFFFFE).hasZip64());
  const WrittenZip zip = zipOfSize(0xFFFFFFFF);
  EXPECT_TRUE(zip.hasZip64());
  EXPECT_EQ(zip.entries().at(0).uncompressedSize, 0xFFFFFFFFU);
  EXPECT_EQ(zip.entries().at(0).localHeaderOffset, 0U);
  EXPECT_EQ(zip.bytes().substr(0, 6), le32(0x04034B50) + le16(45));
  EXPECT_EQ(zip.bytes().substr(31, 20), le16(1) + le16(16) + le64(0xFFFFFFFF) + le64(0));
}

TEST_F(InUtc, ZipWriterKeepsDatesWithinWhatTheFormatCanSay) {
  struct Row {
    sys_seconds written;
    sys_seconds read;
  };
  const std::vector<Row> rows{{someDay + 1s, someDay},
                              {sys_days(1970y / 3 / 4) + 5h, sys_days(1980y / 3 / 4) + 5h},
                              {sys_days(2107y / 12 / 31), sys_days(2107y / 12 / 31)},
                              {sys_days(2300y / 2 / 29), sys_days(2107y / 12 / 31) + 23h + 59min + 58s}};
  for (const Row& row : rows) {
    const WrittenZip zip([&](ZipWriter& writer) { writer.add("a", {}, {}, row.written, 0644); });
    EXPECT_EQ(zip.entries().at(0).modified, row.read);
  }
}

TEST(ZipWriter, MarksFolders) {
  const WrittenZip zip([](ZipWriter& writer) { writer.addPrepared("d/", {}, 0, 0, 0, {}, someDay, 040755, true); });
  EXPECT_TRUE(zip.entries().at(0).isDirectory);
  EXPECT_EQ(zip.bytes().substr(zip.bytes().find("PK\x01\x02") + 38, 4), le32(040755ULL << 16 | 0x10));
}

TEST(ZipWriter, RefusesANameThatTheFormatCannotHold) {
  EXPECT_THROW(WrittenZip([](ZipWriter& writer) { writer.add(run(65536, 'n'), {}, {}, someDay, 0); }), ZipError);
  EXPECT_NO_THROW(WrittenZip([](ZipWriter& writer) { writer.add(run(65535, 'n'), {}, {}, someDay, 0); }));
}

TEST(ZipWriter, OnALocationReplacesWhatStandsThere) {
  const TemporaryFolder folder;
  const auto path = folder.file("a.zip", run(1000, 'x'));
  {
    ZipWriter writer(path);
    writer.add("a", bytesOf("abc"), {}, someDay, 0100644);
    writer.finish();
  }
  EXPECT_EQ(contentOf(path), zipWith("abc").bytes());
  try {
    ZipWriter writer(folder / "no folder" / "b.zip");
    FAIL();
  } catch (const ZipError& error) {
    EXPECT_EQ(error.text(), "couldn't create b.zip");
  }
}

}  // namespace
}  // namespace quirn::tests
