// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/zip_reader.h"

#include <variant>

#include "archive/archive_builders.h"
#include "archive/byte_reader.h"
#include "archive/zip_writer.h"

namespace quirn::tests {
namespace {

using platform::bytesOf;
using platform::textOf;

std::vector<std::string> namesOf(std::string_view zip) {
  std::vector<std::string> names;
  for (const ZipFileEntry& entry : listZipEntries(bytesOf(zip))) names.push_back(entry.name);
  return names;
}

// How reading ends, in words.
template <class Read>
std::string outcomeOf(Read read) {
  try {
    return read();
  } catch (const ZipError& error) {
    return std::string("error: ") + error.what();
  } catch (const ByteReader::OutOfBounds&) {
    return "out of bounds";
  }
}

std::string listing(std::string_view zip) {
  return outcomeOf([&] { return fmt::format("{} entries", listZipEntries(bytesOf(zip)).size()); });
}

std::string firstContents(std::string_view zip, std::optional<std::string_view> password = {}) {
  return outcomeOf([&] {
    const std::vector<ZipFileEntry> entries = listZipEntries(bytesOf(zip));
    return entries.empty() ? "no entries" : std::string(textOf(readZipEntry(entries[0], password, bytesOf(zip))));
  });
}

const std::string emptyArchive = zipOf({});

TEST(ZipListing, EndsAsTheBytesDeserve) {
  const std::string three = zipOf({{.name = "a"}, {.name = "b"}, {.name = "c"}});
  const std::string decoy = le32(0x06054B50) + run(18, '\0');
  const std::string locator = le32(0x07064B50) + le32(0);
  struct Row {
    std::string what;
    std::string zip;
    std::string outcome;
  };
  const std::vector<Row> rows{
      {"21 bytes are no archive", emptyArchive.substr(1), "error: not a ZIP archive"},
      {"22 bytes are an empty one", emptyArchive, "0 entries"},
      {"a comment of any length", zipOf({{}}, {.comment = run(65535, 'c')}), "1 entries"},
      {"an end record in the comment that doesn't reach the end", zipOf({{}}, {.comment = decoy + "more"}),
       "1 entries"},
      {"an end record in the comment that does reach the end", zipOf({{}}, {.comment = "x" + decoy}), "0 entries"},
      {"a byte behind the comment", three + "x", "error: not a ZIP archive"},
      {"a count that is too high", zipOf({{}, {}, {}}, {.count = 5}), "3 entries"},
      {"a count that is too low", zipOf({{}, {}, {}}, {.count = 2}), "2 entries"},
      {"no entries, whatever the directory says", zipOf({{}}, {.count = 0, .directoryOffset = 5}), "0 entries"},
      {"a directory at the very end of the file",
       zipOf({{}}, {.directoryOffset = static_cast<std::uint32_t>(zipOf({{}}).size())}), "0 entries"},
      {"a directory beyond the file",
       zipOf({{}}, {.directoryOffset = static_cast<std::uint32_t>(zipOf({{}}).size() + 1)}),
       "error: CD offset out of range"},
      {"a directory where there is none", zipOf({{}}, {.directoryOffset = 3}), "0 entries"},
      {"ZIP64 numbers without a ZIP64 record", zipOf({{}}, {.count = 0xFFFF}), "1 entries"},
      {"a ZIP64 locator that points nowhere",
       zipOf({{}}, {.count = 0xFFFF, .beforeEnd = locator + le64(1ULL << 63) + le32(1)}), "1 entries"},
      {"a ZIP64 locator that points at something else",
       zipOf({{}}, {.count = 0xFFFF, .beforeEnd = locator + le64(0) + le32(1)}), "1 entries"},
  };
  for (const Row& row : rows) EXPECT_EQ(listing(row.zip), row.outcome) << row.what;
}

TEST(ZipListing, TakesTheNumbersOfZip64WhereTheyAreMeant) {
  const std::string one = zipOf({{}});
  const std::size_t directory = one.size() - 22 - (46 + 5);
  const auto withEnd = [&](std::uint64_t count, std::uint64_t offset) {
    const std::string end = le32(0x06064B50) + le64(44) + run(20, '\0') + le64(count) + le64(0) + le64(offset);
    const std::string locator = le32(0x07064B50) + le32(0) + le64(one.size() - 22) + le32(1);
    return zipOf({{}}, {.count = 0xFFFF, .directoryOffset = 0xFFFFFFFF, .beforeEnd = end + locator});
  };
  EXPECT_EQ(listing(withEnd(1, directory)), "1 entries");
  EXPECT_EQ(listing(withEnd(~0ULL, directory)), "1 entries") << "a count that lies";
  EXPECT_EQ(listing(withEnd(1, ~0ULL)), "error: CD offset out of range");
}

TEST(ZipListing, ReadsEveryField) {
  const std::string extra = le16(0x5455) + le16(1) + "x" + le16(0x0001) + le16(24) + le64(7) + le64(8) + le64(9);
  const std::string zip = zipOf({{.name = "folder/", .data = "", .mode = 040755},
                                 {.name = "big",
                                  .method = 8,
                                  .crc = 0x12345678,
                                  .compressedSize = 0xFFFFFFFF,
                                  .uncompressedSize = 0xFFFFFFFF,
                                  .offset = 0xFFFFFFFF,
                                  .date = 0,
                                  .extra = extra,
                                  .comment = "a comment"}});
  const std::vector<ZipFileEntry> entries = listZipEntries(bytesOf(zip));
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_TRUE(entries[0].isDirectory);
  EXPECT_EQ(entries[0].unixMode, 040755);
  const ZipFileEntry& big = entries[1];
  EXPECT_FALSE(big.isDirectory);
  EXPECT_EQ(big.method, 8);
  EXPECT_EQ(big.realMethod, 8);
  EXPECT_EQ(big.crc32, 0x12345678U);
  EXPECT_EQ(big.uncompressedSize, 7U);
  EXPECT_EQ(big.compressedSize, 8U);
  EXPECT_EQ(big.localHeaderOffset, 9U);
  EXPECT_EQ(big.modified, std::chrono::sys_seconds()) << "there is no month 0";
}

TEST(ZipListing, HasZip64RecordsOnlyForTheNumbersThatAreMissing) {
  const std::string record = le16(1) + le16(8) + le64(5);
  const auto entryWith = [](ZipPart part) { return listZipEntries(bytesOf(zipOf({std::move(part)}))).at(0); };
  EXPECT_EQ(entryWith({.compressedSize = 0xFFFFFFFF, .extra = record}).compressedSize, 5U);
  EXPECT_EQ(entryWith({.offset = 0xFFFFFFFF, .extra = record}).localHeaderOffset, 5U);
  EXPECT_EQ(entryWith({.extra = record}).uncompressedSize, 3U);
  EXPECT_EQ(entryWith({.uncompressedSize = 0xFFFFFFFF, .offset = 0xFFFFFFFF, .extra = record}).localHeaderOffset,
            0xFFFFFFFF)
      << "a record that holds less than it should";
  EXPECT_EQ(entryWith({.offset = 0xFFFFFFFF, .extra = le16(7) + le16(200) + record}).localHeaderOffset, 0xFFFFFFFF)
      << "a record that overruns the field hides those behind it";
}

TEST(ZipListing, RepairsNames) {
  EXPECT_EQ(namesOf(zipOf({{.name = "caf\xC3\xA9"}, {.name = "a\xFF\xC3z"}, {.name = ""}})),
            (std::vector<std::string>{"café", "a\uFFFD\uFFFDz", ""}));
}

TEST(ZipEntries, EndAsTheirBytesDeserve) {
  const std::string text = run(100'000, 'x');
  const ZipPart deflated{.data = deflatedText(text), .method = 8, .crc = crcOf(text)};
  const auto declaring = [&](std::uint32_t size) {
    ZipPart part = deflated;
    part.uncompressedSize = size;
    return zipOf({part});
  };
  struct Row {
    std::string what;
    std::string zip;
    std::string outcome;
  };
  const std::vector<Row> rows{
      {"stored", zipOf({{}}), "abc"},
      {"deflated", declaring(100'000), text},
      {"more than is declared, within the slack", declaring(100'000 - 65536), text},
      {"a byte more than that", declaring(100'000 - 65537), "error: inflate failed or oversized: a.txt"},
      {"less than is declared", declaring(200'000), text},
      {"far less than is declared", declaring(0xFFFFFFFE), text},
      {"a wrong checksum", zipOf({{.crc = 1}}), "error: CRC mismatch: a.txt"},
      {"damaged data", zipOf({{.data = "\x07\x07\x07", .method = 8}}), "error: inflate failed or oversized: a.txt"},
      {"a method that is not read", zipOf({{.method = 12}}), "error: unsupported method 12: a.txt"},
      {"AES without its record", zipOf({{.method = 99}}), "error: unsupported method 99: a.txt"},
      {"no local header", zipOf({{.localSignature = 1}}), "error: bad local header for a.txt"},
      {"a local header beyond the file", zipOf({{.offset = 0xFFFFFFF0}}), "error: bad local header for a.txt"},
      {"data beyond the file", zipOf({{.compressedSize = 5000}}), "out of bounds"},
  };
  for (const Row& row : rows) EXPECT_EQ(firstContents(row.zip), row.outcome) << row.what;
}

// Parts of an archive that ends too early, at every byte: an error or fewer entries, never a crash.
TEST(ZipEntries, OfATruncatedArchiveAreRefused) {
  const std::string zip = zipOf({{.data = deflatedText("abcabcabc"), .method = 8, .crc = crcOf("abcabcabc")}, {}});
  for (std::size_t size = 1; size <= zip.size(); ++size) {
    EXPECT_EQ(listing(zip.substr(0, size - 1)), "error: not a ZIP archive");
    // Its beginning cut off instead: the directory is no longer where the end says.
    EXPECT_NE(firstContents(zip.substr(size)), "abcabcabc") << size;
  }
}

class EncryptedEntry : public testing::Test {
 protected:
  EncryptedEntry() {
    ZipWriter writer([this](std::span<const std::byte> bytes) { zip.append(textOf(bytes)); });
    writer.add("a.txt", bytesOf(text), "secret", {}, 0644);
    writer.finish();
    payload = zip.find("a.txt") + 5 + 11;
    directory = zip.rfind("PK\x01\x02");
  }

  const std::string text = run(1000, 'x') + "end";
  std::string zip;
  std::size_t payload = 0;
  std::size_t directory = 0;
};

TEST_F(EncryptedEntry, OpensWithItsPasswordAlone) {
  EXPECT_EQ(firstContents(zip, "secret"), text);
  EXPECT_EQ(firstContents(zip, "Secret"), "error: the password is wrong");
  EXPECT_EQ(firstContents(zip, ""), "error: the entry is encrypted");
  EXPECT_EQ(firstContents(zip), "error: the entry is encrypted");
}

TEST_F(EncryptedEntry, IsRefusedWhenABitOfItWasChanged) {
  const std::size_t size = listZipEntries(bytesOf(zip)).at(0).compressedSize;
  for (const std::size_t at : {std::size_t{0}, std::size_t{16}, std::size_t{18}, size - 11, size - 10, size - 1}) {
    std::string changed = zip;
    changed[payload + at] = static_cast<char>(changed[payload + at] ^ 1);
    EXPECT_EQ(firstContents(changed, "secret"), "error: the password is wrong") << at;
  }
}

TEST_F(EncryptedEntry, NeedsNoChecksumAndNoStrength) {
  std::string changed = zip;
  changed[directory + 16] = 'x';  // CRC
  EXPECT_EQ(firstContents(changed, "secret"), text);
  changed[directory + 46 + 5 + 8] = 1;  // AES-128; it was made with 256 bits all the same
  EXPECT_EQ(listZipEntries(bytesOf(changed)).at(0).aesStrength, 1);
  EXPECT_EQ(firstContents(changed, "secret"), text);
}

TEST_F(EncryptedEntry, IsWrongWhereItIsTooShort) {
  std::string changed = zip;
  changed.replace(directory + 20, 4, le32(27));
  EXPECT_EQ(firstContents(changed, "secret"), "error: the password is wrong");
}

}  // namespace
}  // namespace quirn::tests
