// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/gzip.h"

#include "archive/archive_builders.h"
#include "archive/deflate_pipeline.h"
#include "platform/compression.h"

namespace quirn::tests {
namespace {

using platform::bytesOf;
using platform::textOf;
using std::chrono::seconds;
using std::chrono::sys_seconds;

constexpr std::uint64_t limit = 1 << 20;

std::string compressed(std::string_view text, sys_seconds date = {}) {
  return std::string(textOf(gzipCompress(bytesOf(text), date)));
}

std::string expanded(std::string_view stream, std::uint64_t most = limit) {
  const auto plain = gzipDecompress(bytesOf(stream), most);
  return plain ? std::string(textOf(*plain)) : "nothing";
}

std::string streamWith(char flags, const std::string& fields) {
  return std::string("\x1F\x8B\x08", 3) + flags + run(6, '\0') + fields + deflatedText("abc") + run(8, 'x');
}

TEST(Gzip, WritesTheFrameOfTheStandard) {
  const std::string stream = compressed("abc", sys_seconds(seconds(0x12345678)));
  EXPECT_EQ(stream.substr(0, 10), std::string("\x1F\x8B\x08\x00\x78\x56\x34\x12\x00\xFF", 10));
  EXPECT_EQ(stream.substr(stream.size() - 8), le32(0x352441C2) + le32(3));
  EXPECT_EQ(compressed("", sys_seconds(seconds(-1))).substr(4, 4), le32(0));
}

TEST(Gzip, GivesBackNothingOfNothing) {
  EXPECT_EQ(expanded(compressed("")), "");
  EXPECT_GE(compressed("").size(), 19U);
}

TEST(Gzip, ReadsHeadersOfEveryKind) {
  struct Row {
    std::string what;
    std::string stream;
    std::string outcome;
  };
  const std::string extra = le16(3) + "xyz";
  const std::vector<Row> rows{
      {"no fields", streamWith(0, ""), "abc"},
      {"a name", streamWith(8, std::string("name\0", 5)), "abc"},
      {"all fields", streamWith(30, extra + std::string("n\0c\0", 4) + "ss"), "abc"},
      {"an unknown flag means nothing", streamWith(char(0x41), ""), "abc"},
      {"an extra field that doesn't end", streamWith(4, le16(60000)), "nothing"},
      {"a name that doesn't end", std::string("\x1F\x8B\x08\x08", 4) + run(30, 'n'), "nothing"},
      {"another method", "\x1F\x8B\x07" + streamWith(0, "").substr(3), "nothing"},
      {"17 bytes", compressed("").substr(0, 17), "nothing"},
      {"no gzip", run(100, 'x'), "nothing"},
      {"a trailer that lies", compressed("abc").substr(0, compressed("abc").size() - 8) + "12345678", "abc"},
      {"a second member", compressed("abc") + compressed("def"), "abc"},
  };
  for (const Row& row : rows) EXPECT_EQ(expanded(row.stream), row.outcome) << row.what;
  EXPECT_EQ(expanded(compressed("abcd"), 3), "nothing") << "the limit";
}

TEST(Gzip, OfATruncatedStreamGivesNothing) {
  const std::string stream = compressed(run(5000, 'x') + "end");
  for (std::size_t size = 0; size < stream.size() - 8; ++size)
    EXPECT_EQ(expanded(stream.substr(0, size)), "nothing") << size;
}

std::string piped(std::string_view text, std::size_t step) {
  std::string stream;
  DeflatePipeline pipeline([&](std::span<const std::byte> bytes) { stream.append(textOf(bytes)); });
  for (std::size_t at = 0; at < text.size(); at += step) pipeline.write(bytesOf(text.substr(at, step)));
  pipeline.finish();
  EXPECT_EQ(pipeline.size(), text.size());
  EXPECT_EQ(pipeline.crc(), crcOf(text));
  return stream;
}

TEST(DeflatePipeline, MakesOneStreamThatDoesNotDependOnHowTheBytesCome) {
  std::string text;
  while (text.size() < 3 * platform::deflatePieceSize) text += fmt::format("line {}\n", text.size() * 7919 % 100'003);
  for (const std::size_t size :
       {std::size_t{0}, std::size_t{1}, platform::deflatePieceSize, platform::deflatePieceSize + 1, text.size()}) {
    SCOPED_TRACE(size);
    const std::string_view part = std::string_view(text).substr(0, size);
    const std::string stream = piped(part, 1 << 20);
    EXPECT_EQ(piped(part, 777'777), stream);
    const auto back = platform::rawDeflateTransform(bytesOf(stream), size, platform::DeflateDirection::expand);
    ASSERT_TRUE(back);
    EXPECT_EQ(textOf(*back), part);
  }
}

TEST(DeflatePipeline, PassesOnWhatItsSinkThrows) {
  DeflatePipeline pipeline([](std::span<const std::byte>) { throw std::runtime_error("full"); });
  pipeline.write(bytesOf("abc"));
  EXPECT_THROW(pipeline.finish(), std::runtime_error);
}

}  // namespace
}  // namespace quirn::tests
