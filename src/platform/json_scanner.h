// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The tokens of JSON text, one at a time, with the grammar of RFC 8259 enforced: what has been handed
// out so far is always the beginning of a document. Needs no memory beyond a byte a level.

#pragma once

#ifdef __SSE2__
#include <emmintrin.h>
#endif

#include <array>
#include <bit>
#include <cstddef>
#include <string>
#include <string_view>

#include "platform/json.h"

namespace quirn::platform {

enum class JsonToken {
  beginObject,
  endObject,
  beginArray,
  endArray,
  key,
  string,
  number,
  trueWord,
  falseWord,
  nullWord,
  end
};

class JsonScanner {
 public:
  // `text` must outlive the scanner.
  explicit JsonScanner(std::string_view text);

  // Throws JsonError. Nothing may be asked for after `end`.
  JsonToken next();

  // The text of the last token, of keys and strings with their quotes.
  std::string_view raw() const { return {start_, stop_}; }
  // Whether the last key or string holds a backslash.
  bool hasEscapes() const { return hasEscapes_; }
  // Where the next token is looked for, in bytes.
  std::size_t offset() const { return static_cast<std::size_t>(at_ - begin_); }

 private:
  enum class Expected { value, valueOrEnd, key, keyOrEnd, separator };

  static bool isPlain(char byte) { return byte >= ' ' && byte != '"' && byte != '\\'; }  // below 0x80
  void skipPlain();
  static bool isDigit(char byte) { return byte >= '0' && byte <= '9'; }

  char peek() const { return at_ != end_ ? *at_ : '\0'; }
  void skipBlanks() {
    while (at_ != end_ && *at_ <= ' ' && isBlank(*at_)) ++at_;
  }
  static bool isBlank(char byte) { return byte == ' ' || byte == '\n' || byte == '\r' || byte == '\t'; }
  JsonToken open(char bracket);
  JsonToken close();
  JsonToken scanKey();
  JsonToken scanValue();
  JsonToken scanWord(std::string_view word, JsonToken token);
  JsonToken scanNumber();
  void scanString();
  void scanEscape();
  void scanCharacter();
  void scanDigits();
  JsonToken finish(JsonToken token, const char* start);
  [[noreturn]] void fail(JsonError::Reason reason = JsonError::Reason::malformed) const;

  const char* begin_;
  const char* end_;
  const char* at_;
  const char* start_;
  const char* stop_;
  std::array<char, jsonDepthLimit> brackets_;  // those that are open
  std::size_t depth_ = 0;
  Expected expected_ = Expected::value;
  bool hasEscapes_ = false;
};

// Inline, since a token takes less time than a call of several functions would.

inline JsonToken JsonScanner::finish(JsonToken token, const char* start) {
  start_ = start;
  stop_ = at_;
  expected_ = Expected::separator;
  return token;
}

[[gnu::always_inline]] inline JsonToken JsonScanner::next() {
  skipBlanks();
  if (expected_ == Expected::separator) {
    if (depth_ == 0) {
      if (at_ != end_) fail();
      return finish(JsonToken::end, at_);
    }
    if (peek() != ',') return close();
    ++at_;
    skipBlanks();
    expected_ = brackets_[depth_ - 1] == '{' ? Expected::key : Expected::value;
  }
  switch (expected_) {
    case Expected::valueOrEnd: return peek() == ']' ? close() : scanValue();
    case Expected::keyOrEnd: return peek() == '}' ? close() : scanKey();
    case Expected::key: return scanKey();
    default: return scanValue();
  }
}

inline JsonToken JsonScanner::open(char bracket) {
  if (depth_ == jsonDepthLimit) fail(JsonError::Reason::tooDeep);
  brackets_[depth_++] = bracket;
  ++at_;
  const bool isObject = bracket == '{';
  const JsonToken token = finish(isObject ? JsonToken::beginObject : JsonToken::beginArray, at_ - 1);
  expected_ = isObject ? Expected::keyOrEnd : Expected::valueOrEnd;
  return token;
}

inline JsonToken JsonScanner::close() {
  const bool isObject = brackets_[depth_ - 1] == '{';
  if (peek() != (isObject ? '}' : ']')) fail();
  --depth_;
  ++at_;
  return finish(isObject ? JsonToken::endObject : JsonToken::endArray, at_ - 1);
}

[[gnu::always_inline]] inline JsonToken JsonScanner::scanKey() {
  const char* const start = at_;
  if (peek() != '"') fail();
  scanString();
  finish(JsonToken::key, start);
  skipBlanks();
  if (peek() != ':') fail();
  ++at_;
  expected_ = Expected::value;
  return JsonToken::key;
}

[[gnu::always_inline]] inline JsonToken JsonScanner::scanValue() {
  const char* const start = at_;
  switch (peek()) {
    case '{':
    case '[': return open(peek());
    case '"': scanString(); return finish(JsonToken::string, start);
    case 't': return scanWord("true", JsonToken::trueWord);
    case 'f': return scanWord("false", JsonToken::falseWord);
    case 'n': return scanWord("null", JsonToken::nullWord);
    default: return scanNumber();
  }
}

[[gnu::always_inline]] inline JsonToken JsonScanner::scanNumber() {
  const char* const start = at_;
  if (peek() == '-') ++at_;
  if (peek() == '0') {
    ++at_;
  } else {
    scanDigits();
  }
  if (peek() == '.') {
    ++at_;
    scanDigits();
  }
  if (peek() == 'e' || peek() == 'E') {
    ++at_;
    if (peek() == '+' || peek() == '-') ++at_;
    scanDigits();
  }
  return finish(JsonToken::number, start);
}

inline void JsonScanner::scanDigits() {
  const char* const first = at_;
  while (at_ != end_ && isDigit(*at_)) ++at_;
  if (at_ == first) fail();
}

// Over the bytes of a string that stand for themselves and need no look at their neighbours.
[[gnu::always_inline]] inline void JsonScanner::skipPlain() {
#ifdef __SSE2__
  // Sixteen at a time: most strings end within them, so that no branch has to be guessed for each byte.
  while (end_ - at_ >= 16) {
    const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(at_));
    // Signed, so that what is beyond ASCII counts as less than a blank too.
    const __m128i special = _mm_or_si128(
        _mm_cmplt_epi8(bytes, _mm_set1_epi8(' ')),
        _mm_or_si128(_mm_cmpeq_epi8(bytes, _mm_set1_epi8('"')), _mm_cmpeq_epi8(bytes, _mm_set1_epi8('\\'))));
    const auto mask = static_cast<unsigned>(_mm_movemask_epi8(special));
    if (mask != 0) {
      at_ += std::countr_zero(mask);
      return;
    }
    at_ += 16;
  }
#endif
  while (at_ != end_ && isPlain(*at_)) ++at_;
}

[[gnu::always_inline]] inline void JsonScanner::scanString() {
  hasEscapes_ = false;
  ++at_;
  for (;;) {
    skipPlain();
    if (peek() == '"') break;
    if (peek() == '\\') {
      scanEscape();
    } else {
      scanCharacter();
    }
  }
  ++at_;
}

// The text that a string token stands for. `raw` is what the scanner gave.
std::string decodedJsonString(std::string_view raw);

}  // namespace quirn::platform
