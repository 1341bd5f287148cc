// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/text.h"

#include "platform/json.h"

namespace quirn::tests {
namespace {

using namespace platform;
using Rows = std::vector<std::pair<std::string, std::string>>;

TEST(Text, RepairsWhatIsNotUtf8) {
  // The bounds of RFC 3629, section 4.
  const Rows rows{
      {"plain Ελ 日本 😀", "plain Ελ 日本 😀"},
      {"\xFF", "�"},
      {"a\x80z", "a�z"},
      {"\xC0\xAF", "��"},            // "/" in two bytes
      {"\xE0\x80\xAF", "���"},       // and in three
      {"\xED\xA0\x80", "���"},       // a surrogate
      {"\xF4\x90\x80\x80", "����"},  // beyond U+10FFFF
      {"\xF4\x8F\xBF\xBF", "\xF4\x8F\xBF\xBF"},
      {"\xED\x9F\xBF\xEE\x80\x80", "\xED\x9F\xBF\xEE\x80\x80"},
      {"z\xC3", "z�"},
      {std::string("a\0b", 3), std::string("a\0b", 3)},
  };
  for (const auto& [bytes, text] : rows) {
    EXPECT_EQ(repairedUtf8(bytes), text);
    EXPECT_EQ(isUtf8(bytes), bytes == text);
    EXPECT_TRUE(isUtf8(repairedUtf8(bytes)));
  }
  EXPECT_FALSE(isUtf8("cut \xE6\x97"));
}

TEST(Text, ShowsNothingThatDrivesATerminal) {
  const Rows rows{
      {"plain Ελ", "plain Ελ"},
      {"two\nlines", "two\\nlines"},
      {"\x1B[2J\r\t\x7F", "\\x1b[2J\\x0d\\x09\\x7f"},
      {"\xC2\x9B"
       "2J\xC2\xA0",
       "\\x9b2J\xC2\xA0"},
      {"\xC2\x80\xC2\x9F", "\\x80\\x9f"},
      {"\xFF\xC2", "��"},
  };
  for (const auto& [text, shown] : rows) EXPECT_EQ(displayText(text), shown);
}

TEST(Text, GoesThroughLatin1AndBack) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all += static_cast<char>(byte);
  EXPECT_TRUE(isUtf8(utf8FromLatin1(all)));
  EXPECT_EQ(latin1FromUtf8(utf8FromLatin1(all)), all);
  EXPECT_EQ(utf8FromLatin1("caf\xE9"), "café");
  EXPECT_EQ(latin1FromUtf8("café 日Ā😀"), "caf\xE9 ???");
}

TEST(Text, IsCutBetweenCharacters) {
  EXPECT_EQ(utf8Prefix("日本", 100), "日本");
  EXPECT_EQ(utf8Prefix("日本", 6), "日本");
  EXPECT_EQ(utf8Prefix("日本", 5), "日");
  EXPECT_EQ(utf8Prefix("日本", 2), "");
  EXPECT_EQ(utf8Prefix("\x80\x80\x80", 2), "");
}

TEST(Json, WritesWhatEveryReaderTakes) {
  const std::vector<std::pair<JsonValue, std::string>> rows{
      {nullptr, "null"},
      {true, "true"},
      {-7, "-7"},
      {std::int64_t{9223372036854775807}, "9223372036854775807"},
      {JsonNumber{"1.0"}, "1.0"},
      {"a \"b\" \\ /\n\t\x01\x1F\x7F é 😀", R"("a \"b\" \\ /\n\t\u0001\u001f)"
                                            "\x7F é 😀\""},
      {std::string("\0\xFF", 2), "\"\\u0000�\""},
      {JsonArray{}, "[]"},
      {JsonObject{}, "{}"},
      {JsonArray{1, JsonArray{}, "a"}, R"([1,[],"a"])"},
      {JsonObject{{"z", 1}, {"a\n", JsonObject{{"", false}}}}, R"({"z":1,"a\n":{"":false}})"},
  };
  for (const auto& [value, text] : rows) EXPECT_EQ(value.text(), text);
}

}  // namespace
}  // namespace quirn::tests
