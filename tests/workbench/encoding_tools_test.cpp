// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/tool_cases.h"

namespace quirn::testing {
namespace {

constexpr std::pair<std::string_view, std::string_view> decode{"mode", "Decode"}, toText{"mode", "Hex→Text"},
    urlSafe{"url", "true"}, domain{"mode", "Decode (xn-- →)"};

// RFC 4648, section 10.
TEST(EncodingTools, theStandardsOwnExamples) {
  constexpr std::string_view text = "foobar";
  const std::vector<std::string_view> base64{"", "Zg==", "Zm8=", "Zm9v", "Zm9vYg==", "Zm9vYmE=", "Zm9vYmFy"};
  const std::vector<std::string_view> base32{
      "", "MY======", "MZXQ====", "MZXW6===", "MZXW6YQ=", "MZXW6YTB", "MZXW6YTBOI======"};
  for (std::size_t length = 0; length <= text.size(); ++length) {
    EXPECT_EQ(outputOf("dev.base64", text.substr(0, length)), base64[length]);
    EXPECT_EQ(outputOf("dev.base64", base64[length], {decode}), text.substr(0, length));
    EXPECT_EQ(outputOf("dev.base32", text.substr(0, length)), base32[length]);
    EXPECT_EQ(outputOf("dev.base32", base32[length], {decode}), text.substr(0, length));
  }
}

TEST(EncodingTools, base64AndBase32) {
  expectAll({
      {"nothing that a URL would need escaped", "dev.base64", {urlSafe}, "\xFB\xEF\xFE>", "--_-Pg"},
      {"padding may be missing", "dev.base64", {decode, urlSafe}, " 4pyTPz8_\n", "✓???"},
      {"padding may be there", "dev.base64", {decode, urlSafe}, "Zg==", "f"},
      {"half of the padding will do", "dev.base64", {decode, urlSafe}, "Zg=", "f"},
      {"a cut text is pointed out", "dev.base64", {decode}, "Zm9vY", "error: Not valid Base64."},
      {"a digit alone is pointed out", "dev.base64", {decode, urlSafe}, "Z", "error: Not valid Base64."},
      {"padding can't stand in the middle", "dev.base64", {decode}, "Zg==Zg==", "error: Not valid Base64."},
      {"too much padding is pointed out", "dev.base64", {decode}, "Zm9v====", "error: Not valid Base64."},
      {"a line end inside is pointed out", "dev.base64", {decode}, "Zm9v\nYmFy", "error: Not valid Base64."},
      {"the other alphabet is pointed out", "dev.base64", {decode}, "Pz8_", "error: Not valid Base64."},
      {"bytes that are no text are pointed out",
       "dev.base64",
       {decode},
       "/w==",
       "error: Decoded bytes aren’t valid UTF-8 text."},
      {"lower case, blanks and padding anywhere don't matter", "dev.base32", {decode}, "mz xw=6\r\n\tytb", "fooba"},
      {"the wrong character is named",
       "dev.base32",
       {decode},
       "MZ1W",
       "error: Invalid Base32 character \"1\" — only A-Z and 2-7 are allowed."},
      {"the wrong character is named whole",
       "dev.base32",
       {decode},
       "é",
       "error: Invalid Base32 character \"É\" — only A-Z and 2-7 are allowed."},
      {"bytes that are no text are pointed out",
       "dev.base32",
       {decode},
       "74",
       "error: Decoded bytes are not valid UTF-8 text."},
  });
}

TEST(EncodingTools, hexBytes) {
  expectAll({
      {"digits as other programs write them", "dev.hex-bytes", {}, "é\n", "c3a90a"},
      {"bytes stand apart", "dev.hex-bytes", {{"sep", "space"}}, "é\n", "c3 a9 0a"},
      {"either case, blanks and prefixes are read", "dev.hex-bytes", {toText}, "0xC3\ta9\n0x41 42", "éAB"},
      {"a lost digit is pointed out",
       "dev.hex-bytes",
       {toText},
       "c3a",
       "error: Hex input must have an even number of digits."},
      {"a wrong digit is pointed out",
       "dev.hex-bytes",
       {toText},
       "zz",
       "error: Invalid hex character — only 0-9 and a-f are allowed."},
      {"bytes that are no text are pointed out",
       "dev.hex-bytes",
       {toText},
       "ff",
       "error: Decoded bytes are not valid UTF-8 text."},
  });
}

TEST(EncodingTools, quotedPrintable) {
  const std::string line(76, 'x');
  EXPECT_EQ(outputOf("dev.quoted-printable", line), line);
  EXPECT_EQ(outputOf("dev.quoted-printable", line + "y"), line + "=\r\ny");
  EXPECT_EQ(outputOf("dev.quoted-printable", line.substr(0, 74) + "é"), line.substr(0, 74) + "=\r\n=C3=A9");
  expectAll({
      {"line ends are kept as they are", "dev.quoted-printable", {}, "a=b\t \r\nü", "a=3Db\t =0D=0A=C3=BC"},
      {"soft breaks vanish, hard ones stay", "dev.quoted-printable", {decode}, "a=\nb=\r\nc\n=3d=3D", "abc\n=="},
      {"a cut escape is pointed out",
       "dev.quoted-printable",
       {decode},
       "a=4",
       "error: Malformed =HH escape in Quoted-Printable input."},
      {"bytes that are no text are pointed out",
       "dev.quoted-printable",
       {decode},
       "=FF",
       "error: Decoded bytes are not valid UTF-8 text."},
  });
}

// RFC 3492, section 7.1, in lower case, and domains.
TEST(EncodingTools, punycode) {
  const std::vector<std::pair<std::string_view, std::string_view>> examples{
      {"ليهمابتكلموشعربي؟", "xn--egbpdaj6bu4bxfgehfvwxn"},
      {"他们为什么不说中文", "xn--ihqwcrb4cv8a8dqg056pqjye"},
      {"почемужеонинеговорятпорусски", "xn--b1abfaaepdrnnbgefbadotcwatmq2g4l"},
      {"3年b組金八先生", "xn--3b-ww4c5e180e575a65lsy2b"},
      {"münchen.de", "xn--mnchen-3ya.de"},
      {"..a-ü-b.", "..xn--a--b-1ra."}};
  for (const auto& [text, code] : examples) {
    EXPECT_EQ(outputOf("dev.punycode", text), code);
    EXPECT_EQ(outputOf("dev.punycode", code, {domain}), text);
  }
  expectAll({
      {"case is folded before encoding, and ASCII left alone",
       "dev.punycode",
       {},
       " MÜNCHEN.De\n",
       "xn--mnchen-3ya.De"},
      {"the prefix is known in either case", "dev.punycode", {domain}, "XN--mnchen-3YA", "münchen"},
      {"what stands for itself must be ASCII",
       "dev.punycode",
       {domain},
       "xn--é-a",
       "error: Invalid basic code point in Punycode label \"xn--é-a\"."},
      {"a wrong digit is pointed out",
       "dev.punycode",
       {domain},
       "a.xn--!",
       "error: Invalid digit in Punycode label \"xn--!\"."},
      {"a cut label is pointed out",
       "dev.punycode",
       {domain},
       "xn--z",
       "error: Invalid digit in Punycode label \"xn--z\"."},
      {"numbers that don't fit are pointed out",
       "dev.punycode",
       {domain},
       "xn--99999999999",
       "error: Punycode overflow while decoding \"xn--99999999999\"."},
      {"numbers of no character are pointed out",
       "dev.punycode",
       {domain},
       "xn--99999a",
       "error: Punycode produced an invalid code point in \"xn--99999a\"."},
  });
  std::string tooLong;
  for (int i = 0; i < 5000; ++i) tooLong += "é";
  EXPECT_EQ(outputOf("dev.punycode", tooLong), "error: Punycode overflow while encoding \"" + tooLong + "\".");
}

TEST(EncodingTools, numberBase) {
  constexpr std::string_view limit = ", or it exceeds the unsigned 64-bit limit (max 18446744073709551615).";
  expectAll({
      {"every base at once",
       "dev.base-convert",
       {},
       " 255 \r\n\n+1_0",
       "DEC: 255 | HEX: 0xff | OCT: 0o377 | BIN: 0b11111111\nDEC: 10 | HEX: 0xa | OCT: 0o12 | BIN: 0b1010"},
      {"a prefix wins over the setting",
       "dev.base-convert",
       {{"from", "Hexadecimal"}},
       "0b101",
       "DEC: 5 | HEX: 0x5 | OCT: 0o5 | BIN: 0b101"},
      {"the setting reads what has no prefix",
       "dev.base-convert",
       {{"from", "Octal"}},
       "17",
       "DEC: 15 | HEX: 0xf | OCT: 0o17 | BIN: 0b1111"},
      {"no line, no number", "dev.base-convert", {}, " \n", ""},
  });
  EXPECT_EQ(outputOf("dev.base-convert", "1\nZz"),
            "error: Could not parse \"Zz\" as a Decimal number" + std::string(limit));
  EXPECT_EQ(outputOf("dev.base-convert", "0b12"),
            "error: Could not parse \"0b12\" as a Binary number" + std::string(limit));
  EXPECT_EQ(outputOf("dev.base-convert", "18446744073709551616"),
            "error: Could not parse \"18446744073709551616\" as a Decimal number" + std::string(limit));
  EXPECT_EQ(outputOf("dev.base-convert", "-1"),
            "error: Could not parse \"-1\" as a Decimal number" + std::string(limit));
}

}  // namespace
}  // namespace quirn::testing
