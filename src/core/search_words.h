// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What people type into a search, brought to a form that can be compared, and what they mean by it.

#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace quirn {

// The words of `text` in lower case. Whatever is neither letter nor digit separates, arrows and
// other signs included: "HEIC → JPG" is heic and jpg, "pdf.to-images" is pdf, to and images.
std::vector<std::string> searchWords(std::string_view text);

// The words joined by single blanks.
std::string joinedWords(std::span<const std::string> words);

// Whether a word carries no meaning beside others: "make", "the", "to".
bool isFiller(std::string_view word);

// Other words that mean the same to somebody who looks for an operation; may be empty.
std::vector<std::string_view> synonymsOf(std::string_view word);

}  // namespace quirn
