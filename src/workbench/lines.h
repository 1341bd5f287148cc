// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Text line by line. Line feeds separate lines; so there is always one line, and one more for each
// line feed.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quirn {

// Calls `use` with each piece of `text` between separators, empty ones included.
template <class Use>
void forEachPiece(std::string_view text, char separator, Use use) {
  for (;;) {
    const std::size_t end = text.find(separator);
    use(text.substr(0, end));
    if (end == std::string_view::npos) return;
    text.remove_prefix(end + 1);
  }
}

// The text with each piece replaced by what `convert` makes of it.
template <class Convert>
std::string mappedPieces(std::string_view text, char separator, Convert convert) {
  std::string result;
  result.reserve(text.size());
  bool isFirst = true;
  forEachPiece(text, separator, [&](std::string_view piece) {
    if (!isFirst) result += separator;
    isFirst = false;
    result += convert(piece);
  });
  return result;
}

template <class Convert>
std::string mappedLines(std::string_view text, Convert convert) {
  return mappedPieces(text, '\n', convert);
}

// `count` pieces of what `make` gives, with `separator` between them; none for a count below one.
template <class Make>
std::string joined(std::int64_t count, std::string_view separator, Make make) {
  std::string text;
  for (std::int64_t i = 0; i < count; ++i) {
    if (i > 0) text += separator;
    text += make();
  }
  return text;
}

template <class Make>
std::string linesOf(std::int64_t count, Make make) {
  return joined(count, "\n", make);
}

}  // namespace quirn
