// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/tool_cases.h"

namespace quirn::testing {
namespace {

// FIPS 180-4 and RFC 1321 for "abc"; RFC 4231 and RFC 2202, test case 2.
TEST(HashTools, theStandardsOwnExamples) {
  constexpr std::pair<std::string_view, std::string_view> key{"key", "Jefe"};
  constexpr std::string_view question = "what do ya want for nothing?";
  expectAll({
      {"the default is SHA-256",
       "dev.hash",
       {},
       "abc",
       "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad"},
      {"nothing has a digest too",
       "dev.hash",
       {},
       "",
       "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855"},
      {"SHA-1", "dev.hash", {{"algo", "SHA-1"}}, "abc", "a9993e364706816aba3e25717850c26c9cd0d89d"},
      {"SHA-384",
       "dev.hash",
       {{"algo", "SHA-384"}},
       "abc",
       "cb00753f45a35e8bb5a03d699ac65007272c32ab0eded1631a8b605a43ff5bed8086072ba1e7cc2358baeca134c825a7"},
      {"SHA-512",
       "dev.hash",
       {{"algo", "SHA-512"}},
       "abc",
       "ddaf35a193617abacc417349ae20413112e6fa4e89a97ea20a9eeee64b55d39a2192992a274fc1a836ba3c23a3feebbd454d4423643ce80"
       "e2a9ac94fa54ca49f"},
      {"MD5", "dev.hash", {{"algo", "MD5"}}, "abc", "900150983cd24fb0d6963f7d28e17f72"},
      {"HMAC-SHA-256", "dev.hmac", {key}, question, "5bdcc146bf60754e6a042426089575c75a003f089d2739839dec58b964ec3843"},
      {"HMAC-SHA-512",
       "dev.hmac",
       {key, {"algo", "SHA-512"}},
       question,
       "164b7a7bfcf819e2e395fbe73b56e0a387bd64222e831fd610270cd7ea2505549758bf75c05a994a6d034f65f8f0e6fdcaeab1a34d4a6b4"
       "b636e070a38bce737"},
      {"HMAC-SHA-1", "dev.hmac", {key, {"algo", "SHA-1"}}, question, "effcdf6ae5eb2fa2d27416d5f184df9c259a7c79"},
      {"a code without a secret would protect nothing",
       "dev.hmac",
       {{"key", ""}},
       "x",
       "error: Enter a secret key to compute the HMAC."},
  });
}

TEST(SlugTool, titlesBecomeURLs) {
  expectAll({
      {"punctuation becomes one separator",
       "dev.slug",
       {},
       "Hello, World! — Quirn’s 1st Release",
       "hello-world-quirn-s-1st-release"},
      {"accents go, letters stay", "dev.slug", {}, "Crème Brûlée À İstanbul", "creme-brulee-a-istanbul"},
      {"letters without a plain form separate", "dev.slug", {}, "Straße", "stra-e"},
      {"lines stay lines", "dev.slug", {{"sep", "_"}}, "--a b--\n\n…\nc", "a_b\n\n\nc"},
  });
}

TEST(CaseTool, everyStyle) {
  constexpr std::string_view title = "the quick brownFox HTTPServer";
  const std::vector<std::pair<std::string_view, std::string_view>> styles{
      {"camelCase", "theQuickBrownFoxHttpServer"},          {"PascalCase", "TheQuickBrownFoxHttpServer"},
      {"snake_case", "the_quick_brown_fox_http_server"},    {"kebab-case", "the-quick-brown-fox-http-server"},
      {"CONSTANT_CASE", "THE_QUICK_BROWN_FOX_HTTP_SERVER"}, {"Title Case", "The Quick Brown Fox Http Server"},
      {"lower", "the quick brown fox http server"},         {"UPPER", "THE QUICK BROWN FOX HTTP SERVER"}};
  for (const auto& [style, output] : styles) EXPECT_EQ(outputOf("dev.case", title, {{"style", style}}), output);
  expectAll({
      {"lines stay lines, also those without words", "dev.case", {}, "aB\r\n\n--\nc", "a_b\n\n\nc"},
      {"capitals at the end are one word", "dev.case", {}, "myURL", "my_url"},
      {"digits join their word", "dev.case", {}, "x2y HTML5Parser", "x2y_html5parser"},
      {"a small letter of another alphabet ends capitals too", "dev.case", {}, "ABéc", "a_b_c"},
      {"an accent of its own is no small letter", "dev.case", {}, "AB\u0301c", "a_b_c"},
  });
}

}  // namespace
}  // namespace quirn::testing
