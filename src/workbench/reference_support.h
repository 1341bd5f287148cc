// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What the reference, time, unit and color tools share in reading their input.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quirn {

// One more than there are separators; pieces may be empty.
std::vector<std::string_view> splitAt(std::string_view text, char separator);

// The lines, each trimmed, without the empty ones.
std::vector<std::string_view> trimmedLines(std::string_view text);

// The runs of characters between white space and line ends.
std::vector<std::string_view> words(std::string_view text);

// ASCII digits, and nothing else; at least one.
bool isDigits(std::string_view text);

// A whole decimal integer: digits, perhaps after "-". Nothing if it doesn't fit.
std::optional<std::int64_t> integerIn(std::string_view text);

// A whole finite decimal number: "1", "-0.5", "+2", "1e3".
std::optional<double> numberIn(std::string_view text);

// What a message quotes of an input, as well-formed text: all of it, or the beginning where it is
// longer than a person reads.
std::string excerpt(std::string_view text);

// With each "%41" as its character, where that gives text that can stand on one line; else as it is.
std::string readablyDecoded(std::string_view text);

// The number without the zeros, and then the point, that end its fraction; "0" for "-0".
std::string withoutTrailingZeros(std::string number);

}  // namespace quirn
