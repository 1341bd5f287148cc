// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/json_scanner.h"

#include <array>
#include <cstdint>

#include "platform/text.h"

namespace quirn::platform {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool isDecimal(char byte) {
  return byte >= '0' && byte <= '9';
}

// -1 if it is none.
int hexDigit(char byte) {
  if (isDecimal(byte)) return byte - '0';
  const char lower = static_cast<char>(byte | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

std::uint32_t hexNumber(std::string_view digits) {
  std::uint32_t number = 0;
  for (const char digit : digits) number = number * 16 + static_cast<std::uint32_t>(hexDigit(digit));
  return number;
}

bool isHighSurrogate(std::uint32_t unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}

bool isLowSurrogate(std::uint32_t unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

char unescaped(char letter) {
  switch (letter) {
    case 'b': return '\b';
    case 'f': return '\f';
    case 'n': return '\n';
    case 'r': return '\r';
    case 't': return '\t';
    default: return letter;
  }
}

// What `\uXXXX` at the beginning of `escape` stands for, together with a second half that follows.
// Removes what it has read.
std::uint32_t takeCodePoint(std::string_view& escape) {
  const std::uint32_t first = hexNumber(escape.substr(2, 4));
  escape.remove_prefix(6);
  if (!isHighSurrogate(first) || !escape.starts_with("\\u")) return first;
  const std::uint32_t second = hexNumber(escape.substr(2, 4));
  if (!isLowSurrogate(second)) return first;
  escape.remove_prefix(6);
  return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
}

}  // namespace

JsonScanner::JsonScanner(std::string_view text)
    : begin_(text.data()), end_(begin_ + text.size()), at_(begin_), start_(begin_), stop_(begin_) {
  if (text.starts_with(byteOrderMark)) at_ += byteOrderMark.size();
}

void JsonScanner::fail(JsonError::Reason reason) const {
  throw JsonError(reason, offset());
}

JsonToken JsonScanner::scanWord(std::string_view word, JsonToken token) {
  if (!std::string_view(at_, end_).starts_with(word)) fail();
  at_ += word.size();
  return finish(token, at_ - word.size());
}

void JsonScanner::scanEscape() {
  hasEscapes_ = true;
  ++at_;
  const char letter = peek();
  if (letter == '\0' || std::string_view("\"\\/bfnrtu").find(letter) == std::string_view::npos) fail();
  ++at_;
  for (int digit = 0; letter == 'u' && digit < 4; ++digit) {
    if (hexDigit(peek()) < 0) fail();
    ++at_;
  }
}

// Beyond ASCII; a control character or the end of the text is none.
void JsonScanner::scanCharacter() {
  const std::size_t length = static_cast<unsigned char>(peek()) < 0x80 ? 0 : utf8SequenceLength({at_, end_});
  if (length == 0) fail();
  at_ += length;
}

std::string decodedJsonString(std::string_view raw) {
  std::string_view rest = raw.substr(1, raw.size() - 2);
  std::string text;
  text.reserve(rest.size());
  while (!rest.empty()) {
    const std::size_t plain = std::min(rest.find('\\'), rest.size());
    text += rest.substr(0, plain);
    rest.remove_prefix(plain);
    if (rest.starts_with("\\u")) {
      appendUtf8(text, takeCodePoint(rest));
    } else if (!rest.empty()) {
      text += unescaped(rest[1]);
      rest.remove_prefix(2);
    }
  }
  return text;
}

}  // namespace quirn::platform
