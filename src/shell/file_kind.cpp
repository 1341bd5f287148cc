// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shell/file_kind.h"

#include <array>
#include <string_view>

#include "core/accepted_inputs.h"

namespace quirn {
namespace {

std::string_view noun(FileKind kind) {
  using enum FileKind;
  switch (kind) {
    case folder: return "Folder";
    case pdf: return "Document";
    case image: return "Image";
    case video: return "Video";
    case audio: return "Audio";
    case archive: return "Archive";
    case table: return "Table";
    case document: return "Document";
    case text:
    case other: break;
  }
  return "File";
}

// Longer ends of names are no extensions that a person would read as a kind.
constexpr std::size_t longestKind = 5;

}  // namespace

FileKind fileKind(const InputFile& input) {
  using enum FileKind;
  if (input.isDirectory) return folder;
  constexpr std::array kinds{std::pair(ContentKind::pdf, pdf),     std::pair(ContentKind::image, image),
                             std::pair(ContentKind::movie, video), std::pair(ContentKind::video, video),
                             std::pair(ContentKind::audio, audio), std::pair(ContentKind::archive, archive),
                             std::pair(ContentKind::gzip, archive)};
  for (const auto& [content, kind] : kinds) {
    if (input.contentType.conformsTo(content)) return kind;
  }
  if (hasExtension(input, {"csv", "tsv", "xlsx", "xls", "ods"})) return table;
  if (hasExtension(input, {"docx", "doc", "odt", "rtf", "pptx", "odp", "epub"})) return document;
  return input.contentType.mimeType().starts_with("text/") ? text : other;
}

std::string fileKindText(const InputFile& input) {
  const FileKind kind = fileKind(input);
  const std::string extension = upperCased(input.extension());
  const std::string word(noun(kind));
  if (kind == FileKind::folder || extension.empty() || extension.size() > longestKind) return word;
  return extension + " " + lowerCased(word);
}

}  // namespace quirn
