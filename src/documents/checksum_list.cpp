// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/checksum_list.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

#include "documents/hash_algorithm.h"

namespace quirn {
namespace {

std::string_view trimmed(std::string_view text) {
  const std::size_t begin = text.find_first_not_of(" \t");
  if (begin == std::string_view::npos) return {};
  return text.substr(begin, text.find_last_not_of(" \t") - begin + 1);
}

bool isHexDigit(char character) {
  return (character >= '0' && character <= '9') || (character >= 'a' && character <= 'f') ||
         (character >= 'A' && character <= 'F');
}

bool isHash(std::string_view text) {
  return algorithmOfDigestLength(text.size()).has_value() && std::ranges::all_of(text, isHexDigit);
}

struct BsdMarks {
  std::size_t open;
  std::size_t close;
  std::size_t equals;
};

std::optional<BsdMarks> bsdMarks(std::string_view line) {
  const BsdMarks marks{line.find('('), line.rfind(')'), line.rfind('=')};
  const bool complete = marks.open != std::string_view::npos && marks.close != std::string_view::npos &&
                        marks.equals != std::string_view::npos;
  if (!complete || marks.open > marks.close || marks.close > marks.equals) return std::nullopt;
  return marks;
}

// GNU programs begin the line of a name in which "\", line feed and carriage return are written as
// "\\", "\n" and "\r" with a backslash, in either form.
std::string unescapedName(std::string_view escaped) {
  std::string name;
  for (std::size_t i = 0; i < escaped.size(); ++i) {
    if (escaped[i] != '\\' || i + 1 == escaped.size()) {
      name += escaped[i];
      continue;
    }
    const char code = escaped[++i];
    name += code == 'n' ? '\n' : code == 'r' ? '\r' : code;
  }
  return name;
}

std::optional<ChecksumEntry> parseBsd(std::string_view line, const BsdMarks& marks) {
  const std::string_view name = trimmed(line.substr(marks.open + 1, marks.close - marks.open - 1));
  const std::string_view hash = trimmed(line.substr(marks.equals + 1));
  if (name.empty() || !isHash(hash)) return std::nullopt;
  return ChecksumEntry{std::string(hash), line.starts_with('\\') ? unescapedName(name) : std::string(name)};
}

std::optional<ChecksumEntry> parseGnu(std::string_view line) {
  const std::size_t blank = line.find(' ');
  if (blank == std::string_view::npos) return std::nullopt;
  const bool escaped = line.starts_with('\\');
  const std::string_view hash = line.substr(escaped ? 1 : 0, escaped ? blank - 1 : blank);
  std::string_view name = line.substr(blank);
  name.remove_prefix(std::min(name.find_first_not_of(' '), name.size()));
  if (name.starts_with('*')) name.remove_prefix(1);
  if (name.empty() || !isHash(hash)) return std::nullopt;
  return ChecksumEntry{std::string(hash), escaped ? unescapedName(name) : std::string(name)};
}

std::optional<ChecksumEntry> parseLine(std::string_view line) {
  if (line.empty() || line.starts_with('#')) return std::nullopt;
  const auto marks = bsdMarks(line);
  return marks ? parseBsd(line, *marks) : parseGnu(line);
}

}  // namespace

std::vector<ChecksumEntry> parseChecksumList(std::string_view text) {
  constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
  if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
  std::vector<ChecksumEntry> entries;
  while (!text.empty()) {
    const std::size_t end = std::min(text.find_first_of("\r\n"), text.size());
    if (auto entry = parseLine(trimmed(text.substr(0, end)))) entries.push_back(std::move(*entry));
    text.remove_prefix(std::min(end + 1, text.size()));
  }
  return entries;
}

std::string checksumLine(std::string_view hash, std::string_view name) {
  if (name.find_first_of("\r\n") == std::string_view::npos) return fmt::format("{}  {}\n", hash, name);
  std::string escaped;
  for (const char character : name) {
    switch (character) {
      case '\\': escaped += "\\\\"; break;
      case '\n': escaped += "\\n"; break;
      case '\r': escaped += "\\r"; break;
      default: escaped += character;
    }
  }
  return fmt::format("\\{}  {}\n", hash, escaped);
}

}  // namespace quirn
