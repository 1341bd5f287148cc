// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/json.h"

#include <gtest/gtest.h>

#include "platform/json_format.h"
#include "platform/json_scanner.h"

namespace quirn::platform {
namespace {

constexpr std::size_t unlimited = 1 << 30;

std::string compact(std::string_view text) {
  return formattedJson(text, JsonLayout::compact, unlimited);
}

std::string nested(std::size_t depth, std::string_view core = "") {
  return fmt::format("{:[>{}}{}{:]>{}}", "", depth, core, "", depth);
}

TEST(Json, acceptsWhatRfc8259Allows) {
  // Each comes out as it went in: by one pass over the text, and by way of a value.
  for (const std::string text : {"null",
                                 "true",
                                 "false",
                                 "0",
                                 "-0",
                                 "1.0",
                                 "1e400",
                                 "-1.5E+10",
                                 "1234567890123456789012345678901234567890",
                                 "\"\"",
                                 "\"\\\"\\\\\\b\\f\\n\\r\\t\"",
                                 "\"\\u0000\\u001f\"",
                                 "\"\x7F\"",
                                 "\"é😀\"",
                                 "[]",
                                 "{}",
                                 "[[],{}]",
                                 R"({"a":1,"a":2})",
                                 R"({"z":[1,2,{"y":null}],"a":"/"})",
                                 "\"\\ud800\"",
                                 "\"x\\udc00y\""}) {
    EXPECT_EQ(compact(text), text);
    EXPECT_EQ(parsedJson(text).text(), text);
  }
}

TEST(Json, refusesWhatRfc8259Forbids) {
  for (const std::string text : {"",
                                 " ",
                                 "nul",
                                 "True",
                                 "01",
                                 "-",
                                 "+1",
                                 "1.",
                                 ".5",
                                 "1e",
                                 "1e+",
                                 "0x1",
                                 "NaN",
                                 "[1,]",
                                 "[,1]",
                                 "[1 2]",
                                 "[1",
                                 "{\"a\"}",
                                 "{\"a\":}",
                                 "{\"a\":1,}",
                                 "{a:1}",
                                 "{1:2}",
                                 "{\"a\" 1}",
                                 "[1}",
                                 "{\"a\":1]",
                                 "]",
                                 "1 2",
                                 "\"",
                                 "\"\\",
                                 "\"\\x\"",
                                 "\"\\u12\"",
                                 "\"\\u12g4\"",
                                 "\"\n\"",
                                 "\"\x01\"",
                                 "\"\xFF\"",
                                 "\"\xC3\"",
                                 "\"\xED\xA0\x80\"",
                                 "'a'",
                                 "\xC2\xA0"
                                 "1",
                                 "// c\n1"}) {
    EXPECT_THROW(compact(text), JsonError) << text;
    EXPECT_THROW(parsedJson(text), JsonError) << text;
  }
  EXPECT_THROW(compact(std::string_view("1\0", 2)), JsonError);
  EXPECT_THROW(compact(std::string_view("\"\0\"", 3)), JsonError);
}

TEST(Json, normalizesEscapesThatNeedNotBe) {
  EXPECT_EQ(compact(R"("\/\u00e9\ud83d\ude00\u0041\u000a")"), R"("/é😀A\n")");
  EXPECT_EQ(parsedJson(R"("\/\u00e9\ud83d\ude00\u0041\u000a")").text(), R"("/é😀A\n")");
  EXPECT_EQ(compact("\xEF\xBB\xBF[1]"), "[1]") << "a byte order mark, as Windows writes it";
}

TEST(Json, tellsWhereTheTextStopsToBeJson) {
  try {
    parsedJson(R"({"a": tru})");
    FAIL();
  } catch (const JsonError& error) {
    EXPECT_EQ(error.offset(), 6U);
    EXPECT_EQ(error.reason(), JsonError::Reason::malformed);
  }
}

TEST(Json, everyBeginningOfADocumentIsRefused) {
  const std::string text = R"({"a":[1.5e3,true,null,"é\u00e9"],"b":{}})";
  for (std::size_t length = 0; length < text.size(); ++length) {
    EXPECT_THROW(compact(text.substr(0, length)), JsonError) << length;
    EXPECT_THROW(parsedJson(text.substr(0, length)), JsonError) << length;
  }
}

TEST(Json, deepNestingEndsWithAReasonAndWithoutACrash) {
  EXPECT_EQ(compact(nested(jsonDepthLimit)), nested(jsonDepthLimit));
  EXPECT_EQ(parsedJson(nested(jsonDepthLimit)).text(), nested(jsonDepthLimit));
  for (const std::string& text : {nested(jsonDepthLimit + 1), nested(1'000'000), std::string(1'000'000, '[')}) {
    try {
      compact(text);
      FAIL();
    } catch (const JsonError& error) {
      EXPECT_EQ(error.reason(), JsonError::Reason::tooDeep);
      EXPECT_EQ(error.offset(), jsonDepthLimit);
    }
    EXPECT_THROW(parsedJson(text), JsonError);
  }
}

TEST(Json, outputBeyondTheLimitIsNotMade) {
  const std::string text = nested(900, "1,2,3");
  EXPECT_THROW(formattedJson(text, JsonLayout::pretty, 100'000), JsonError);
  EXPECT_THROW(parsedJson(text).text(JsonLayout::pretty, 100'000), JsonError);
}

TEST(Json, bothWaysLayOutAlike) {
  const std::string text = R"({"a":[1,{"b":[]},"x"],"c":{},"d":{"e":null}})";
  const std::string pretty = formattedJson(text, JsonLayout::pretty, unlimited);
  // As jq 1.6 prints it.
  EXPECT_EQ(pretty, R"({
  "a": [
    1,
    {
      "b": []
    },
    "x"
  ],
  "c": {},
  "d": {
    "e": null
  }
})");
  EXPECT_EQ(parsedJson(text).text(JsonLayout::pretty), pretty);
  EXPECT_EQ(compact(pretty), text);
  const std::string deep = formattedJson(nested(40, "1,2"), JsonLayout::pretty, unlimited);
  EXPECT_NE(deep.find("\n" + std::string(80, ' ') + "1,\n" + std::string(80, ' ') + "2\n"), std::string::npos);
}

TEST(Json, longTextSurvivesTheBlocksItIsWrittenIn) {
  std::string text = "[\"";
  for (int i = 0; i < 20'000; ++i) text += "0123456789é";
  text += "\"";
  for (int i = 0; i < 20'000; ++i) text += "," + std::to_string(i);
  text += "]";
  EXPECT_EQ(compact(text), text);
  EXPECT_EQ(parsedJson(text).text(), text);
}

TEST(Json, valuesTellWhatTheyAre) {
  const JsonValue value = parsedJson(R"({"n":1.50,"t":true,"s":"x","a":[1],"o":{},"z":null,"n":2})");
  EXPECT_EQ(value.find("n")->number()->text, "2") << "the last of a repeated key counts";
  EXPECT_TRUE(*value.find("t")->truth());
  EXPECT_EQ(*value.find("s")->string(), "x");
  EXPECT_EQ(value.find("a")->array()->size(), 1U);
  EXPECT_TRUE(value.find("o")->object()->empty());
  EXPECT_TRUE(value.find("z")->isNull());
  EXPECT_EQ(value.find("absent"), nullptr);
  EXPECT_EQ(value.find("s")->find("x"), nullptr);
}

TEST(Json, repeatedKeysCollapseInPlaceOfTheFirst) {
  EXPECT_EQ(parsedJson(R"({"a":1,"b":2,"a":3})", JsonDuplicates::lastValueWins).text(), R"({"a":3,"b":2})");
  std::string many = "{";
  for (int i = 0; i < 1000; ++i) many += fmt::format("\"k{}\":{},", i % 100, i);
  many.back() = '}';
  EXPECT_EQ(parsedJson(many, JsonDuplicates::lastValueWins).object()->size(), 100U);
}

TEST(Json, keysAreSortedByCodePointAtEveryDepth) {
  JsonValue value = parsedJson(R"({"b":[{"y":1,"x":2}],"é":1,"B":2,"":3,"a10":4,"a9":5})");
  value.sortKeys();
  EXPECT_EQ(value.text(), R"({"":3,"B":2,"a10":4,"a9":5,"b":[{"x":2,"y":1}],"é":1})");
}

TEST(Json, textThatIsNotUtf8IsRepaired) {
  EXPECT_EQ(JsonValue("a\xFF\xED\xA0\x80z\xED").text(), "\"a\xEF\xBF\xBD\\ud800z\xEF\xBF\xBD\"");
}

}  // namespace
}  // namespace quirn::platform
