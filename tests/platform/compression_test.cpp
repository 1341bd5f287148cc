// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/compression.h"

#include "archive/archive_builders.h"

namespace quirn::tests {
namespace {

using platform::Bytes;
using platform::DeflateDirection;
using platform::DeflatePiece;
using platform::InflateStream;

Bytes bytesIn(std::string_view text) {
  const auto view = platform::bytesOf(text);
  return {view.begin(), view.end()};
}

std::string lines(std::int64_t count) {
  std::string text;
  for (std::int64_t i = 0; i < count; ++i)
    text += fmt::format("line {} of a file that repeats itself, {}\n", i, i * i % 977);
  return text;
}

std::optional<Bytes> expanded(const Bytes& stream, std::uint64_t limit) {
  return platform::rawDeflateTransform(stream, limit, DeflateDirection::expand);
}

// As a program that streams would expand it, through a small window on either side.
std::optional<std::string> streamed(const Bytes& stream, std::size_t step) {
  InflateStream inflate;
  std::string text;
  std::span<const std::byte> left(stream);
  for (;;) {
    std::string room(step, '\0');
    std::span<const std::byte> input = left.first(std::min(step, left.size()));
    std::span<std::byte> output = std::as_writable_bytes(std::span(room));
    const std::size_t given = input.size();
    const auto status = inflate.advance(input, output);
    left = left.subspan(given - input.size());
    text += room.substr(0, step - output.size());
    if (status == InflateStream::Status::ended) return text;
    if (status == InflateStream::Status::damaged || (left.empty() && output.size() == step)) return std::nullopt;
  }
}

TEST(Crc32, IsThatOfTheStandardHoweverTheBytesCome) {
  // The check value that every catalogue of checksums gives for this one.
  EXPECT_EQ(platform::crc32Of(platform::bytesOf("123456789")), 0xCBF43926);
  std::uint32_t state = platform::crc32Start;
  for (const char* part : {"1", "", "2345", "6789"}) platform::crc32Update(state, platform::bytesOf(part));
  EXPECT_EQ(~state, 0xCBF43926);
}

TEST(RawDeflate, GivesBackWhatWasCompressed) {
  for (const std::string& text :
       {std::string(), std::string("a"), lines(2000), noise(70'000), std::string(9 << 20, 'x'), lines(250'000)}) {
    SCOPED_TRACE(text.size());
    const auto stream =
        platform::rawDeflateTransform(platform::bytesOf(text), platform::noOutputLimit, DeflateDirection::compress);
    ASSERT_TRUE(stream);
    EXPECT_EQ(expanded(*stream, text.size()), bytesIn(text));
    EXPECT_EQ(streamed(*stream, 100'000), text);
  }
}

TEST(RawDeflate, ExpandsBlocksOfEveryKind) {
  // RFC 1951, 3.2.4 and 3.2.6, by hand: a stored block of "abc", and the empty block with fixed codes.
  EXPECT_EQ(expanded(bytesIn(std::string("\x01\x03\x00\xFC\xFF"
                                         "abc",
                                         8)),
                     10),
            bytesIn("abc"));
  EXPECT_EQ(expanded(bytesIn(std::string("\x03\x00", 2)), 0), Bytes());
}

TEST(RawDeflate, KeepsToItsLimit) {
  const Bytes stream = platform::deflatedPiece(platform::bytesOf(std::string(100'000, '\0')), DeflatePiece::last);
  EXPECT_TRUE(expanded(stream, 100'000));
  EXPECT_FALSE(expanded(stream, 99'999));
  EXPECT_FALSE(expanded(stream, 0));
}

TEST(RawDeflate, RefusesWhatBreaksOffAndIgnoresWhatFollows) {
  const std::string text = lines(300);
  Bytes stream = platform::deflatedPiece(platform::bytesOf(text), DeflatePiece::last);
  for (std::size_t size = 0; size < stream.size(); ++size) {
    const Bytes cut(stream.begin(), stream.begin() + static_cast<std::ptrdiff_t>(size));
    EXPECT_FALSE(expanded(cut, platform::noOutputLimit)) << size;
    EXPECT_FALSE(streamed(cut, 64)) << size;
  }
  platform::append(stream, platform::bytesOf("trailing bytes"));
  EXPECT_EQ(expanded(stream, text.size()), bytesIn(text));
  EXPECT_EQ(streamed(stream, 64), text);
}

TEST(RawDeflate, OfABombTakesNoMoreThanItsLimit) {
  const Bytes bomb = platform::deflatedPiece(platform::bytesOf(std::string(70 << 20, '\0')), DeflatePiece::last);
  ASSERT_LT(bomb.size(), 1U << 20);
  EXPECT_FALSE(expanded(bomb, 65 << 20));
  EXPECT_EQ(expanded(bomb, 70 << 20).value().size(), 70U << 20);
}

TEST(DeflatedPieces, JoinToOneStream) {
  const std::vector<std::string> parts{lines(3000), "", "a", noise(50'000), std::string(40'000, ' '),
                                       lines(10),   "", "z"};
  Bytes stream;
  std::string whole;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const auto piece = i + 1 == parts.size() ? DeflatePiece::last : DeflatePiece::continued;
    platform::append(stream, platform::deflatedPiece(platform::bytesOf(parts[i]), piece));
    whole += parts[i];
  }
  EXPECT_EQ(expanded(stream, whole.size()), bytesIn(whole));
  EXPECT_EQ(streamed(stream, 1000), whole);
}

TEST(DeflatedPieces, EndOnAByteWhereverTheirLastBlockEnds) {
  // Every length ends its last block on another bit.
  for (int length = 0; length < 200; ++length) {
    const std::string text = lines(5).substr(0, static_cast<std::size_t>(length));
    Bytes stream = platform::deflatedPiece(platform::bytesOf(text), DeflatePiece::continued);
    EXPECT_FALSE(expanded(stream, 1000)) << "it isn't at its end";
    platform::append(stream, platform::deflatedPiece(platform::bytesOf("end"), DeflatePiece::last));
    EXPECT_EQ(expanded(stream, 1000), bytesIn(text + "end")) << length;
  }
}

}  // namespace
}  // namespace quirn::tests
