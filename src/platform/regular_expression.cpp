// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/regular_expression.h"

#include <fmt/format.h>
#include <unicode/uregex.h>

#include <algorithm>
#include <array>
#include <limits>
#include <memory>

#include "platform/loaded_library.h"
#include "platform/text.h"

namespace quirn::platform {
namespace {

// Opened when first asked: with its tables, ICU would add 2 ms to every start of the program.
struct Icu {
  decltype(uregex_open)* open = nullptr;
  decltype(uregex_close)* close = nullptr;
  decltype(uregex_setText)* setText = nullptr;
  decltype(uregex_setStackLimit)* setStackLimit = nullptr;
  decltype(uregex_setMatchCallback)* setMatchCallback = nullptr;
  decltype(uregex_setFindProgressCallback)* setFindProgressCallback = nullptr;
  decltype(uregex_findNext)* findNext = nullptr;
  decltype(uregex_groupCount)* groupCount = nullptr;
  decltype(uregex_start)* start = nullptr;
  decltype(uregex_end)* end = nullptr;

  static const Icu& loaded() {
    static const Icu icu;
    return icu;
  }

 private:
  Icu() : library_("libicui18n.so." U_ICU_VERSION_SHORT) {
    find("uregex_open", open);
    find("uregex_close", close);
    find("uregex_setText", setText);
    find("uregex_setStackLimit", setStackLimit);
    find("uregex_setMatchCallback", setMatchCallback);
    find("uregex_setFindProgressCallback", setFindProgressCallback);
    find("uregex_findNext", findNext);
    find("uregex_groupCount", groupCount);
    find("uregex_start", start);
    find("uregex_end", end);
  }

  // Every name of ICU ends with its version.
  template <class Function>
  void find(const std::string& name, Function*& function) {
    library_.find((name + "_" U_ICU_VERSION_SHORT).c_str(), function);
  }

  LoadedLibrary library_;
};

struct Fault {
  UErrorCode code;
  std::string_view words;
};
constexpr std::array<Fault, 15> faults = {{
    {U_REGEX_RULE_SYNTAX, "the syntax is wrong"},
    {U_REGEX_BAD_ESCAPE_SEQUENCE, "a backslash is followed by a letter that means nothing there"},
    {U_REGEX_PROPERTY_SYNTAX, "there is no such Unicode property or set"},
    {U_REGEX_UNIMPLEMENTED, "this feature is not supported"},
    {U_REGEX_MISMATCHED_PAREN, "the parentheses don’t match"},
    {U_REGEX_NUMBER_TOO_BIG, "a number is too large"},
    {U_REGEX_BAD_INTERVAL, "an interval in braces is not like {2}, {2,} or {2,5}"},
    {U_REGEX_MAX_LT_MIN, "the end of an interval in braces is below its beginning"},
    {U_REGEX_INVALID_BACK_REF, "there is no such group to refer back to"},
    {U_REGEX_INVALID_FLAG, "there is no such flag"},
    {U_REGEX_LOOK_BEHIND_LIMIT, "what is looked for behind must have a longest length"},
    {U_REGEX_MISSING_CLOSE_BRACKET, "a square bracket is not closed"},
    {U_REGEX_INVALID_RANGE, "the end of a range in brackets is below its beginning"},
    {U_REGEX_PATTERN_TOO_BIG, "the pattern is too large"},
    {U_REGEX_INVALID_CAPTURE_GROUP_NAME, "the name of a group is not allowed"},
}};

std::string description(UErrorCode code, const UParseError& where) {
  const auto* const known = std::ranges::find(faults, code, &Fault::code);
  std::string words(known == faults.end() ? "the pattern can’t be read" : known->words);
  if (where.offset > 0) words += fmt::format(" (line {}, character {})", std::max(where.line, 1), where.offset);
  return words + '.';
}

[[noreturn]] void failForEffort() {
  throw RegexError(RegexError::Reason::tooLong, "the matching takes too long.");
}

std::u16string utf16(std::string_view text) {
  std::u16string units;
  units.reserve(text.size());
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t length = utf8SequenceLength(text.substr(at));
    const auto lead = static_cast<unsigned char>(text[at]);
    char32_t code = length <= 1 ? lead : lead & (0x7FU >> length);
    if (length == 0) code = 0xFFFD;
    for (std::size_t i = 1; i < length; ++i) code = code << 6 | (static_cast<unsigned char>(text[at + i]) & 0x3FU);
    at += std::max<std::size_t>(length, 1);
    if (code >= 0x10000) units += static_cast<char16_t>(0xD7C0 + (code >> 10));
    units += static_cast<char16_t>(code < 0x10000 ? code : 0xDC00 | (code & 0x3FF));
  }
  return units;
}

bool isSurrogate(char16_t unit, char16_t first) {
  return (unit & 0xFC00) == first;
}

std::string utf8(std::u16string_view units) {
  std::string text;
  for (std::size_t at = 0; at < units.size(); ++at) {
    char32_t code = units[at];
    const bool isPair = isSurrogate(units[at], 0xD800) && at + 1 < units.size() && isSurrogate(units[at + 1], 0xDC00);
    if (isPair) code = 0x10000 + ((code & 0x3FF) << 10) + (units[++at] & 0x3FFU);
    const bool isAlone = code >= 0xD800 && code < 0xE000;
    appendUtf8(text, isAlone ? 0xFFFD : code);
  }
  return text;
}

std::int32_t length32(std::u16string_view units) {
  if (units.size() > std::numeric_limits<std::int32_t>::max()) failForEffort();
  return static_cast<std::int32_t>(units.size());
}

struct Deadline {
  std::chrono::steady_clock::time_point end;
  bool isPassed = false;

  bool check() {
    isPassed = isPassed || std::chrono::steady_clock::now() > end;
    return !isPassed;
  }
  static UBool goesOnMatching(const void* context, std::int32_t) { return static_cast<UBool>(of(context).check()); }
  static UBool goesOnFinding(const void* context, std::int64_t) { return static_cast<UBool>(of(context).check()); }

 private:
  // ICU hands back the pointer as const that it was given.
  static Deadline& of(const void* context) { return *static_cast<Deadline*>(const_cast<void*>(context)); }
};

// The expression with the text that it is searched in. Both must outlive it.
class Search {
 public:
  Search(std::u16string_view pattern, std::uint32_t flags, std::u16string_view subject, Deadline& deadline)
      : subject_(subject), expression_(opened(pattern, flags)) {
    constexpr std::int32_t stackBytes = 64 << 20;
    UErrorCode code = U_ZERO_ERROR;
    icu_.setText(expression_.get(), subject.data(), length32(subject), &code);
    icu_.setStackLimit(expression_.get(), stackBytes, &code);
    icu_.setMatchCallback(expression_.get(), Deadline::goesOnMatching, &deadline, &code);
    icu_.setFindProgressCallback(expression_.get(), Deadline::goesOnFinding, &deadline, &code);
    groups_ = icu_.groupCount(expression_.get(), &code);
    if (U_FAILURE(code)) failForEffort();
  }

  std::optional<RegexMatch> next() {
    UErrorCode code = U_ZERO_ERROR;
    const bool found = icu_.findNext(expression_.get(), &code) != 0;
    if (U_FAILURE(code)) failForEffort();
    if (!found) return std::nullopt;
    RegexMatch match{.start = bound(icu_.start, 0), .end = bound(icu_.end, 0), .text = *group(0)};
    for (std::int32_t i = 1; i <= groups_; ++i) match.groups.push_back(group(i));
    return match;
  }

 private:
  using Owner = std::unique_ptr<URegularExpression, void (*)(URegularExpression*)>;

  Owner opened(std::u16string_view pattern, std::uint32_t flags) const {
    UErrorCode code = U_ZERO_ERROR;
    UParseError where{};
    Owner expression(icu_.open(pattern.data(), length32(pattern), flags, &where, &code), icu_.close);
    if (U_FAILURE(code)) throw RegexError(RegexError::Reason::pattern, description(code, where));
    return expression;
  }

  std::size_t bound(decltype(uregex_start)* function, std::int32_t index) const {
    UErrorCode code = U_ZERO_ERROR;
    return static_cast<std::size_t>(function(expression_.get(), index, &code));
  }

  std::optional<std::string> group(std::int32_t index) const {
    const std::size_t start = bound(icu_.start, index);
    if (start > subject_.size()) return std::nullopt;  // -1: it took no part
    return utf8(subject_.substr(start, bound(icu_.end, index) - start));
  }

  const Icu& icu_ = Icu::loaded();
  std::u16string_view subject_;
  Owner expression_;
  std::int32_t groups_ = 0;
};

std::uint32_t flagsOf(RegexOptions options) {
  std::uint32_t flags = 0;
  if (options.ignoresCase) flags |= UREGEX_CASE_INSENSITIVE;
  if (options.anchorsMatchLines) flags |= UREGEX_MULTILINE;
  if (options.dotMatchesLineEnds) flags |= UREGEX_DOTALL;
  return flags;
}

}  // namespace

void forEachRegexMatch(std::string_view pattern, RegexOptions options, std::string_view subject,
                       std::chrono::milliseconds limit, const std::function<void(const RegexMatch&)>& take) {
  const std::u16string units = utf16(subject);
  Deadline deadline{std::chrono::steady_clock::now() + limit};
  const std::u16string patternUnits = utf16(pattern);
  Search search(patternUnits, flagsOf(options), units, deadline);
  while (const std::optional<RegexMatch> match = search.next()) {
    take(*match);
    if (!deadline.check()) failForEffort();
  }
}

}  // namespace quirn::platform
