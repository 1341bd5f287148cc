// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <gtest/gtest.h>

#include <chrono>

#include "workbench/json_path.h"
#include "workbench/jwt.h"
#include "workbench/structured_tools.h"
#include "workbench/tool_rows.h"

namespace quirn::tests {
namespace {

TEST(JsonTool, laysOut) {
  expectRows(
      jsonTool(),
      {
          {"nothing to do is no error", " \n\t", "", {}},
          {"numbers are never rounded",
           "[1.0,1e400,12345678901234567890]",
           "[1.0,1e400,12345678901234567890]",
           {{"mode", "Minify"}}},
          {"white space of the web around JSON is no part of it", "\u00A0\u2003[1]\u3000", "[\n  1\n]", {}},
          {"slashes stay readable", R"({"u":"http:\/\/x\/é"})", R"({"u":"http://x/é"})", {{"mode", "Minify"}}},
          {"a single value is JSON", "\"x\"", "\"x\"", {}},
          {"order is kept", R"({"b":1,"a":{}})", "{\n  \"b\": 1,\n  \"a\": {}\n}", {}},
          {"sorting reaches inner objects",
           R"({"b":1,"a":{"d":1,"c":2}})",
           R"({"a":{"c":2,"d":1},"b":1})",
           {{"mode", "Minify"}, {"sort", "true"}}},
          {"a repeated key is not lost by sorting",
           R"({"b":1,"a":1,"b":2})",
           R"({"a":1,"b":1,"b":2})",
           {{"mode", "Minify"}, {"sort", "true"}}},
          {"half a character is not lost", R"(["\ud800"])", R"(["\ud800"])", {{"mode", "Minify"}, {"sort", "true"}}},
          {"an unknown mode is the compact one", "[1, 2]", "[1,2]", {{"mode", "?"}}},
          {"what is no JSON is told", "{a:1}", "! Invalid JSON.", {}},
          {"the same when sorting", "{a:1}", "! Invalid JSON.", {{"sort", "true"}}},
          {"absurd nesting is told as what it is",
           std::string(10'000, '['),
           "! This JSON is nested more than 1000 levels deep.",
           {}},
      });
}

TEST(JsonTool, doesNotExplode) {
  // 500,000 items a thousand levels deep would be a gigabyte of blanks.
  const std::string bomb = std::string(1000, '[') + repeated("1,", 500'000) + "1" + std::string(1000, ']');
  EXPECT_EQ(outcome(jsonTool(), bomb), "! The output would be too large to be shown.");
}

using json_path::Index;
using json_path::Key;
using json_path::Step;
using json_path::Wildcard;

TEST(JsonPath, readsSteps) {
  const std::vector<std::pair<std::string, std::vector<Step>>> rows = {
      {"$", {}},
      {"$.a[0]", {{false, Key{"a"}}, {false, Index{0}}}},
      {"$['a'][0]", {{false, Key{"a"}}, {false, Index{0}}}},
      {"$[ \"a.b\" ]", {{false, Key{"a.b"}}}},
      {R"($['it\'s'])", {{false, Key{"it's"}}}},
      {"$..*", {{true, Wildcard{}}}},
      {"$..[2]", {{true, Index{2}}}},
      {"$.['a']", {{false, Key{"a"}}}},
      {"$[*].x", {{false, Wildcard{}}, {false, Key{"x"}}}},
      {"$[ -1 ][+2]", {{false, Index{-1}}, {false, Index{2}}}},
      {"$.a[0", {{false, Key{"a"}}, {false, Index{0}}}},
      {"$['a", {{false, Key{"a"}}}},
  };
  for (const auto& [path, steps] : rows) EXPECT_EQ(json_path::parsedSteps(path), steps) << path;
}

TEST(JsonPath, findsInTheOrderOfTheDocument) {
  const std::string store = R"({"t":"0","b":[{"t":"1","in":{"t":"2"}},{"t":3}],"e":[]})";
  const auto row = [&](std::string loss, std::string path, std::string output) {
    return ToolRow{std::move(loss), store, std::move(output), {{"path", std::move(path)}}};
  };
  expectRows(jsonPathTool(),
             {
                 row("an outer match comes first", "$..t", "4 matches:\n\n0\n1\n2\n3"),
                 row("a path of blanks is none", "  ", "! Enter a JSONPath expression."),
                 row("the document itself", "$.e", "1 match:\n\n[]"),
                 row("an index counts from 0", "$.b[1].t", "1 match:\n\n3"),
                 row("a negative index gives nothing", "$.b[-1]", "No matches."),
                 row("a key of an array gives nothing", "$.b.t", "No matches."),
                 row("all items", "$.b[*].t", "2 matches:\n\n1\n3"),
                 row("an index at any depth", "$..[1]", "1 match:\n\n{\"t\":3}"),
                 row("all values at any depth, outer first", "$.b..*",
                     "6 matches:\n\n"
                     R"({"t":"1","in":{"t":"2"}}
1
{"t":"2"}
2
{"t":3}
3)"),
                 row("no dollar", "b", "! JSONPath must start with $."),
                 row("an empty step", "$.b..", "! Empty step in path."),
                 row("a word where a step is due", "$[0]été12345", "! Unexpected character in path near “été12345”."),
                 row("no index", "$[x]", "! Invalid array index “x”."),
                 row("an index beyond all numbers", "$[99999999999999999999]",
                     "! Invalid array index “99999999999999999999”."),
             });
}

TEST(JsonPath, wholeDocumentsAndOddOnes) {
  expectRows(jsonPathTool(),
             {
                 {"the whole document is one match", R"({"a":1.50})", "1 match:\n\n{\"a\":1.50}", {{"path", "$"}}},
                 {"a fragment is a document", "null", "1 match:\n\nnull", {{"path", "$"}}},
                 {"no JSON", "{", "! Invalid JSON.", {{"path", "$"}}},
                 {"the last of a repeated key", R"({"a":1,"a":2})", "1 match:\n\n2", {{"path", "$.*"}}},
                 {"half a character can be shown",
                  R"(["\ud800"])",
                  "1 match:\n\n\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD",
                  {{"path", "$[0]"}}},
             });
  const std::string deep = std::string(300, '[') + std::string(300, ']');
  EXPECT_EQ(outcome(jsonPathTool(), "[" + repeated(deep + ",", 40) + "1]", {{"path", "$" + repeated("..*", 9)}}),
            "! This path visits too many values.");
}

// RFC 7519, 3.1.
constexpr std::string_view rfcToken =
    "eyJ0eXAiOiJKV1QiLA0KICJhbGciOiJIUzI1NiJ9"
    ".eyJpc3MiOiJqb2UiLA0KICJleHAiOjEzMDA4MTkzODAsDQogImh0dHA6Ly9leGFtcGxlLmNvbS9pc19yb290Ijp0cnVlfQ"
    ".dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk";

TEST(Jwt, readsTheExampleOfItsStandard) {
  EXPECT_EQ(jwtDescription(rfcToken, std::chrono::sys_seconds(std::chrono::seconds(1300819380 + 90))), R"(HEADER:
{
  "alg": "HS256",
  "typ": "JWT"
}

PAYLOAD:
{
  "exp": 1300819380,
  "http://example.com/is_root": true,
  "iss": "joe"
}

SIGNATURE: dBjftJeZ4CVP-mB92K27uhbUJU1p1r_wW1gFWFOEjXk (base64url, not verified)

CLAIMS:
Expires (exp): 2011-03-22T18:43:00Z (2 minutes ago))");
}

TEST(Jwt, tellsClaimsInTheirOrder) {
  // {"exp":7200.5,"iat":0,"nbf":"soon"} and {"exp":1e400}, by a Base64 encoder.
  const std::chrono::sys_seconds epoch{};
  const auto claims = [&](const std::string& payload) {
    const std::string text = jwtDescription("e30." + payload + ".", epoch);
    return text.substr(text.find("CLAIMS:"));
  };
  EXPECT_EQ(claims("eyJleHAiOjcyMDAuNSwiaWF0IjowLCJuYmYiOiJzb29uIn0"),
            "CLAIMS:\nIssued at (iat): 1970-01-01T00:00:00Z (now)\n"
            "Expires (exp): 1970-01-01T02:00:00Z (2 hours from now)");
  EXPECT_EQ(claims("eyJleHAiOjFlNDAwfQ"), "CLAIMS:\nExpires (exp): 1e400");
}

TEST(Jwt, tellsWhatIsWrong) {
  expectRows(jwtTool(),
             {
                 {"nothing", "", "! A JWT has three dot-separated parts (header.payload.signature).", {}},
                 {"two parts", "e30.e30", "! A JWT has three dot-separated parts (header.payload.signature).", {}},
                 {"five, as an encrypted token has",
                  "a.b.c.d.e",
                  "! A JWT has three dot-separated parts (header.payload.signature).",
                  {}},
                 {"no Base64", "e3*.e30.", "! The header isn't valid base64url.", {}},
                 {"a lone character", "e30.e.", "! The payload isn't valid base64url.", {}},
                 {"no JSON", "e30.e3s.", "! The payload isn't valid JSON.", {}},
                 {"an empty part is no JSON", ".e30.", "! The header isn't valid JSON.", {}},
                 {"a token without signature can be read",
                  " e30.MQ.\n",
                  "HEADER:\n{}\n\nPAYLOAD:\n1\n\nSIGNATURE:  (base64url, not verified)",
                  {}},
             });
}

TEST(QueryString, toJson) {
  expectRows(queryStringTool(),
             {
                 {"nothing is an empty object", " ? ", "{}", {}},
                 {"names are sorted, repeated ones an array in order",
                  "?b=2&a=x+y&b=%C3%A9&b",
                  "{\n  \"a\": \"x y\",\n  \"b\": [\n    \"2\",\n    \"é\",\n    \"\"\n  ]\n}",
                  {}},
                 {"a value keeps its equals signs", "a=b=c&&", "{\n  \"a\": \"b=c\"\n}", {}},
                 {"what can't be decoded stays",
                  "a=100%&b=%FF&c=%2",
                  "{\n  \"a\": \"100%\",\n  \"b\": \"%FF\",\n  \"c\": \"%2\"\n}",
                  {}},
                 {"one question mark alone is the sign", "??a=%00", "{\n  \"?a\": \"\\u0000\"\n}", {}},
             });
}

TEST(QueryString, fromJson) {
  const std::string advice = "! Provide a JSON object, e.g. {\"a\":\"1\",\"b\":[\"x\",\"y\"]}.";
  const std::map<std::string, std::string> back = {{"mode", "JSON→Query"}};
  expectRows(queryStringTool(),
             {
                 {"names are sorted, arrays repeated", R"({"b":["x","y"],"a":"1 é+&","c":[]})",
                  "a=1%20%C3%A9%2B%26&b=x&b=y", back},
                 {"values of other kinds", R"({"a":true,"b":1.50,"c":null,"d":{"e":[1]},"-_.~":[false]})",
                  "-_.~=false&a=true&b=1.50&c=null&d=%7B%22e%22%3A%5B1%5D%7D", back},
                 {"an array", "[1]", advice, back},
                 {"no JSON", "a=1", advice, back},
                 {"nothing", "", advice, back},
             });
}

}  // namespace
}  // namespace quirn::tests
