// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/unicode.h"

#include <unicode/bytestream.h>
#include <unicode/casemap.h>
#include <unicode/normalizer2.h>
#include <unicode/stringpiece.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>

#include <cstdint>
#include <limits>
#include <stdexcept>

#include "platform/text.h"

namespace quirn::platform {
namespace {

bool isAscii(char character) {
  return static_cast<unsigned char>(character) < 0x80;
}

UChar32 codePoint(char32_t scalar) {
  return static_cast<UChar32>(scalar);
}

icu::StringPiece piece(std::string_view text) {
  // The library counts in 32 bits, and its results may be three times as long.
  if (text.size() > std::numeric_limits<std::int32_t>::max() / 4) throw std::length_error("text");
  return {text.data(), static_cast<std::int32_t>(text.size())};
}

void require(UErrorCode status) {
  if (U_FAILURE(status)) throw std::runtime_error(u_errorName(status));
}

template <class Convert>
std::string converted(std::string_view text, Convert convert) {
  std::string result;
  icu::StringByteSink<std::string> sink(&result, static_cast<std::int32_t>(piece(text).length()));
  UErrorCode status = U_ZERO_ERROR;
  convert(piece(text), sink, status);
  require(status);
  return result;
}

char32_t scalarBefore(std::string_view text, std::size_t at) {
  std::size_t start = at - 1;
  while (start > 0 && at - start < 4 && (static_cast<unsigned char>(text[start]) & 0xC0) == 0x80) --start;
  return firstScalar(text.substr(start, at - start)).value;
}

int clusterBreak(char32_t scalar) {
  return u_getIntPropertyValue(codePoint(scalar), UCHAR_GRAPHEME_CLUSTER_BREAK);
}

bool belongsToTheNext(char32_t scalar) {
  return scalar >= 0x80 && clusterBreak(scalar) == U_GCB_PREPEND;
}

bool belongsToTheLast(char32_t scalar) {
  if (scalar < 0x80) return false;
  const int value = clusterBreak(scalar);
  return value == U_GCB_EXTEND || value == U_GCB_SPACING_MARK || value == U_GCB_ZWJ;
}

bool isControl(char32_t scalar) {
  const int value = clusterBreak(scalar);
  return value == U_GCB_CONTROL || value == U_GCB_CR || value == U_GCB_LF;
}

}  // namespace

bool isAlphanumeric(char32_t scalar) {
  return (U_GET_GC_MASK(codePoint(scalar)) & (U_GC_L_MASK | U_GC_M_MASK | U_GC_N_MASK)) != 0;
}

bool isUppercase(char32_t scalar) {
  return u_isUUppercase(codePoint(scalar)) != 0;
}

bool isLowercase(char32_t scalar) {
  return u_isULowercase(codePoint(scalar)) != 0;
}

std::string lowercase(std::string_view text) {
  return converted(text, [](icu::StringPiece from, icu::ByteSink& to, UErrorCode& status) {
    icu::CaseMap::utf8ToLower("", 0, from, to, nullptr, status);
  });
}

std::string uppercase(std::string_view text) {
  return converted(text, [](icu::StringPiece from, icu::ByteSink& to, UErrorCode& status) {
    icu::CaseMap::utf8ToUpper("", 0, from, to, nullptr, status);
  });
}

std::string withoutDiacritics(std::string_view text) {
  UErrorCode found = U_ZERO_ERROR;
  const icu::Normalizer2* const decomposer = icu::Normalizer2::getNFDInstance(found);
  require(found);
  const std::string decomposed = converted(text, [&](icu::StringPiece from, icu::ByteSink& to, UErrorCode& status) {
    decomposer->normalizeUTF8(0, from, to, nullptr, status);
  });
  std::string result;
  result.reserve(decomposed.size());
  for (std::string_view rest = decomposed; !rest.empty();) {
    const auto [scalar, length] = firstScalar(rest);
    if (scalar < 0x80 || u_charType(codePoint(scalar)) != U_NON_SPACING_MARK) result += rest.substr(0, length);
    rest.remove_prefix(length);
  }
  return result;
}

bool isCharacterBoundary(std::string_view text, std::size_t at) {
  if (at == 0 || at >= text.size()) return true;
  if (isAscii(text[at - 1]) && isAscii(text[at])) return text[at - 1] != '\r' || text[at] != '\n';
  const char32_t before = scalarBefore(text, at);
  const char32_t after = firstScalar(text.substr(at)).value;
  if (isControl(before) || isControl(after)) return true;
  return !belongsToTheLast(after) && !belongsToTheNext(before);
}

char asciiAt(std::string_view text, std::size_t at) {
  if (at >= text.size() || !isAscii(text[at])) return '\0';
  return isCharacterBoundary(text, at) && isCharacterBoundary(text, at + 1) ? text[at] : '\0';
}

}  // namespace quirn::platform
