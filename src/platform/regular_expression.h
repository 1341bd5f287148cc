// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Regular expressions of Unicode text, as ICU defines them.

#pragma once

#include <chrono>
#include <cstddef>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quirn::platform {

struct RegexOptions {
  bool ignoresCase = false;
  bool anchorsMatchLines = false;
  bool dotMatchesLineEnds = false;
};

struct RegexMatch {
  std::size_t start = 0;  // in UTF-16 units
  std::size_t end = 0;    // behind the match
  std::string text;
  std::vector<std::optional<std::string>> groups;  // nothing for one that took no part
};

class RegexError final : public std::exception {
 public:
  enum class Reason { pattern, tooLong };

  RegexError(Reason reason, std::string message) : reason_(reason), message_(std::move(message)) {}
  Reason reason() const { return reason_; }
  // What is wrong with the pattern, and where: "a parenthesis is not closed (at character 4)."
  const std::string& message() const { return message_; }
  const char* what() const noexcept override { return message_.c_str(); }

 private:
  Reason reason_;
  std::string message_;
};

// Hands every match to `take`, in order. Throws RegexError: for a pattern that is none, and when all
// the matching together takes longer than `limit` or needs too much memory, as patterns do whose
// repetitions nest.
void forEachRegexMatch(std::string_view pattern, RegexOptions options, std::string_view subject,
                       std::chrono::milliseconds limit, const std::function<void(const RegexMatch&)>& take);

}  // namespace quirn::platform
