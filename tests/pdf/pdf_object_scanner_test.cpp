// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pdf_object_scanner.h"

#include <gtest/gtest.h>

namespace quirn::tests {
namespace {

using platform::PDFReference;
using platform::ScannedObject;

// Object 7 is left out, the others get ten times their number; 30 is an object that is the integer 5.
const platform::PDFRewriting rewriting{
    .numberOf = [](PDFReference reference) { return reference.number == 7 ? 0 : reference.number * 10; },
    .integerAt =
        [](PDFReference reference) { return reference.number == 30 ? std::optional<std::int64_t>(5) : std::nullopt; },
    .stringText = {}};

std::string scanned(const std::string& bytes) {
  std::string text;
  const ScannedObject object = scanNumberedObject(bytes, rewriting, text);
  if (object.end == ScannedObject::End::cut) return "cut";
  if (object.end == ScannedObject::End::odd) return "odd";
  if (object.isStream)
    text += fmt::format(" + {} bytes from {}", object.dataLength, bytes.substr(object.dataOffset, 4));
  return text;
}

TEST(PDFObjectScanner, TakesTokensOverAndRenumbersReferences) {
  const std::vector<std::pair<std::string, std::string>> rows{
      {"1 0 obj\n<< /A 2 0 R /B [3 0 R 4 5 6 0 R]/C(1 0 R)>>\nendobj\n", "<</A 20 0 R/B[30 0 R 4 5 60 0 R]/C(1 0 R)>>"},
      {"1 0 obj [ 7 0 R /N 7 0 R] endobj ", "[null/N null]"},
      {"1 0 obj 12 0 R endobj ", "120 0 R"},
      {"1 0 obj % 9 0 R\r-1.5 endobj ", "-1.5"},
      {"1 0 obj <</S (a\\)(b) %c) /H<4 1> /T true>> endobj ", "<</S(a\\)(b) %c)/H<4 1>/T true>>"},
      {"1 0 obj<</Length 4>>stream\r\nABCD", "<<>> + 4 bytes from ABCD"},
      {"1 0 obj<</Length 30 0 R/X 1>>stream\nABCDE", "<</X 1>> + 5 bytes from ABCD"},
      {"1 0 obj<</Length 128/V 4>>endobj ", "<</V 4 /Length 128>>"},
      {"1 0 obj<</D<</Length 3>>>>endobj ", "<</D<</Length 3>>>>"},
  };
  for (const auto& [bytes, text] : rows) EXPECT_EQ(scanned(bytes), text) << bytes;
}

TEST(PDFObjectScanner, AsksForMoreWhereAnObjectMayGoOn) {
  const std::string object = "12 0 obj << /Name 345 0 R /S (a) /H <61> >> endobj ";
  for (std::size_t length = 0; length + 1 < object.size(); ++length) {
    EXPECT_EQ(scanned(object.substr(0, length)), "cut") << object.substr(0, length);
  }
}

TEST(PDFObjectScanner, LeavesWhatIsOddToTheLibrary) {
  for (const std::string bytes :
       {"1 0 obj << /A 1 endobj ", "1 0 obj [ >> endobj ", "1 0 obj ] endobj ", "1 0 obj 1 2 endobj ",
        "1 0 obj endobj ", "1 0 obj << /A 1 0 X >> endobj ", "1 0 obj R endobj ", "1 0 obj [0 R] endobj ",
        "x 0 obj 1 endobj ", "1 0 obj <</Length 4>>stream\rABCD", "1 0 obj <</Length 99 0 R>>stream\nABCD",
        "1 0 obj <</X 4>>stream\nABCD", "1 0 obj [1]stream\nABCD", "1 0 obj {} endobj "}) {
    EXPECT_EQ(scanned(bytes), "odd") << bytes;
  }
  EXPECT_EQ(scanned("1 0 obj " + std::string(100'000, '[')), "odd");
}

TEST(PDFObjectScanner, KnowsTheBytesOfStrings) {
  const std::vector<std::pair<std::string, std::string>> rows{
      {R"((a\(b\)\\c))", R"(a(b)\c)"},
      {R"((\101\1012\0053))",
       "AA2\x05"
       "3"},
      {"(a\\\r\nb\r\nc\rd)", "ab\nc\nd"},
      {R"((\n\r\t\b\f\q))", "\n\r\t\b\fq"},
      {"<48 65\n6C6c6>", "Hell`"},
      {"<>", ""},
  };
  for (const auto& [token, bytes] : rows) EXPECT_EQ(platform::decodedString(token), bytes) << token;
}

}  // namespace
}  // namespace quirn::tests
