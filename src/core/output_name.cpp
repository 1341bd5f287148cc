// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/output_name.h"

#include <fmt/format.h>

#include <mutex>
#include <string>
#include <unordered_set>

#include "platform/text.h"

namespace quirn {
namespace fs = std::filesystem;
namespace {

constexpr std::size_t longestName = 255;  // bytes, on every common file system

// The names given out since the process began. It only grows.
struct ReservedOutputPaths {
  std::mutex mutex;
  std::unordered_set<std::string> paths;  // guarded by mutex
};

ReservedOutputPaths& reservedOutputPaths() {
  static ReservedOutputPaths reserved;
  return reserved;
}

// A folder that can't be looked into has no name taken: the writing that follows says what is
// wrong.
bool isTaken(const fs::path& path) {
  std::error_code unknown;
  return fs::exists(fs::symlink_status(path, unknown));
}

// " (7)", or nothing for the first of a name.
std::string numberMark(int number) {
  return number > 0 ? fmt::format(" ({})", number) : "";
}

std::string fileName(std::string_view stem, std::string_view mark, int number, std::string_view extension) {
  std::string rest = std::string(mark) + numberMark(number);
  if (!extension.empty()) rest += fmt::format(".{}", extension);
  const std::size_t room = rest.size() < longestName ? longestName - rest.size() : 0;
  return std::string(platform::utf8Prefix(stem, room)) + rest;
}

std::string markOf(const OutputNaming& naming) {
  return naming.suffix.empty() ? "" : fmt::format(" ({})", naming.suffix);
}

// `mark` stands between the stem and the number.
fs::path uniqueURL(const fs::path& folder, std::string_view stem, std::string_view mark, std::string_view extension) {
  ReservedOutputPaths& reserved = reservedOutputPaths();
  const std::scoped_lock guard(reserved.mutex);
  for (int number = 0;; ++number) {
    fs::path candidate = folder / fileName(stem, mark, number, extension);
    std::string standardised = candidate.lexically_normal().string();
    if (reserved.paths.contains(standardised) || isTaken(candidate)) continue;
    reserved.paths.insert(std::move(standardised));
    return candidate;
  }
}

}  // namespace

fs::path uniqueOutputURL(const fs::path& folder, std::string_view stem, std::string_view suffix,
                         std::string_view extension) {
  return uniqueURL(folder, stem, fmt::format(" ({})", suffix), extension);
}

fs::path uniqueOutputURL(const fs::path& folder, const OutputNaming& naming) {
  return uniqueURL(folder, naming.stem, markOf(naming), naming.extension);
}

std::string fileNameOf(const OutputNaming& naming) {
  return fileName(naming.stem, markOf(naming), 0, naming.extension);
}

fs::path uniqueFileURL(const fs::path& folder, std::string_view stem, std::string_view extension) {
  return uniqueURL(folder, stem, "", extension);
}

}  // namespace quirn
