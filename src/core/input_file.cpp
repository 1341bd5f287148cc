// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/input_file.h"

#include <algorithm>
#include <iterator>
#include <system_error>

#include "core/operation_error.h"
#include "platform/file_status.h"

namespace quirn {
namespace fs = std::filesystem;
namespace {

std::string mapped(std::string_view text, char first, char last, char shift) {
  std::string result(text);
  for (char& character : result) {
    if (character >= first && character <= last) character = static_cast<char>(character + shift);
  }
  return result;
}

// "/photos/" names the folder "/photos".
fs::path withoutTrailingSlash(const fs::path& path) {
  return path.has_filename() || !path.has_relative_path() ? path : path.parent_path();
}

std::optional<InputFile> inputAt(const fs::path& url) {
  using enum platform::FileStatus::Kind;
  const platform::FileStatus status = platform::statusAt(url);
  if (status.kind != file && status.kind != folder) return std::nullopt;
  if (!platform::isReadable(url)) return std::nullopt;
  const bool isFolder = status.kind == folder;
  return InputFile{.id = platform::Uuid::random(),
                   .url = url,
                   .contentType = isFolder ? ContentType("inode/directory") : ContentType::ofFile(url),
                   .size = status.size,
                   .isDirectory = isFolder,
                   .bookmark = std::nullopt};
}

}  // namespace

std::string lowerCased(std::string_view text) {
  return mapped(text, 'A', 'Z', 'a' - 'A');
}

std::string upperCased(std::string_view text) {
  return mapped(text, 'a', 'z', 'A' - 'a');
}

fs::path located(const fs::path& path) {
  if (path.empty()) return path;
  const fs::path absolute = withoutTrailingSlash(fs::absolute(path));
  const bool climbs = std::ranges::find(absolute, fs::path("..")) != absolute.end();
  if (!climbs) return withoutTrailingSlash(absolute.lexically_normal());
  // Behind a link, ".." is not the folder that the text before it names.
  std::error_code unresolved;
  const fs::path folder = fs::canonical(absolute.parent_path(), unresolved);
  return unresolved ? absolute : withoutTrailingSlash((folder / absolute.filename()).lexically_normal());
}

std::string InputFile::extension() const {
  const std::string dotted = url.extension().string();
  return dotted.empty() ? dotted : lowerCased(std::string_view(dotted).substr(1));
}

Intake takeIn(std::span<const fs::path> locations) {
  Intake intake;
  for (const fs::path& location : locations) {
    const fs::path url = located(location);
    if (auto input = inputAt(url)) {
      intake.files.push_back(std::move(*input));
    } else {
      intake.unreadable.push_back({.id = platform::Uuid::random(),
                                   .fileName = url.filename().string(),
                                   .message = OperationError::readFailed(url, "").userMessage()});
    }
  }
  return intake;
}

OperationResult withUnreadable(OperationResult result, std::vector<FileFailure> unreadable) {
  if (unreadable.empty()) return result;
  result.failures.insert(result.failures.begin(), std::make_move_iterator(unreadable.begin()),
                         std::make_move_iterator(unreadable.end()));
  result.summary = failureSummary(result.outputs.size(), result.failures);
  return result;
}

}  // namespace quirn
