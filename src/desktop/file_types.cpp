// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "desktop/file_types.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <set>

namespace quirn::desktop {
namespace {

struct FileType {
  std::string_view mime;
  std::string_view extension;
};

constexpr auto fileTypes = std::to_array<FileType>({
    {"application/pdf", "pdf"},
    {"image/jpeg", "jpg"},
    {"image/png", "png"},
    {"image/webp", "webp"},
    {"image/heif", "heic"},
    {"image/avif", "avif"},
    {"image/tiff", "tiff"},
    {"image/gif", "gif"},
    {"image/bmp", "bmp"},
    {"image/svg+xml", "svg"},
    {"image/x-adobe-dng", "dng"},
    {"audio/mpeg", "mp3"},
    {"audio/flac", "flac"},
    {"audio/x-wav", "wav"},
    {"audio/mp4", "m4a"},
    {"audio/ogg", "ogg"},
    {"video/mp4", "mp4"},
    {"video/quicktime", "mov"},
    {"video/x-matroska", "mkv"},
    {"video/webm", "webm"},
    {"application/zip", "zip"},
    {"application/x-tar", "tar"},
    {"application/x-compressed-tar", "tar.gz"},
    {"application/gzip", "gz"},
    {"text/plain", "txt"},
    {"text/markdown", "md"},
    {"text/html", "html"},
    {"text/csv", "csv"},
    {"text/tab-separated-values", "tsv"},
    {"application/json", "json"},
    {"application/xml", "xml"},
    {"application/rtf", "rtf"},
    {"application/vnd.openxmlformats-officedocument.wordprocessingml.document", "docx"},
    {"application/vnd.openxmlformats-officedocument.spreadsheetml.sheet", "xlsx"},
    {"application/vnd.openxmlformats-officedocument.presentationml.presentation", "pptx"},
    {"application/x-subrip", "srt"},
    {"text/vtt", "vtt"},
    {"text/x-ssa", "ass"},
    {"text/vcard", "vcf"},
    {"text/calendar", "ics"},
    {"message/rfc822", "eml"},
    {"application/gpx+xml", "gpx"},
    {"application/vnd.google-earth.kml+xml", "kml"},
    {"application/postscript", "eps"},
    {"application/vnd.sqlite3", "sqlite"},
});

InputFile fileOf(const FileType& type, std::string_view stem) {
  return {.url = std::filesystem::path("/").append(std::string(stem) + "." + std::string(type.extension)),
          .contentType = ContentType(std::string(type.mime)),
          .size = 1};
}

bool takes(const OperationType& operation, const FileType& type) {
  const std::array files{fileOf(type, "a"), fileOf(type, "b")};
  return operation.canRun(std::span(files).first(1)) || operation.canRun(files);
}

}  // namespace

std::vector<std::string> typesOf(const OperationType& type) {
  std::vector<std::string> taken;
  for (const FileType& each : fileTypes) {
    if (takes(type, each)) taken.emplace_back(each.mime);
  }
  if (taken.size() == fileTypes.size()) taken.clear();
  return taken;
}

std::vector<std::string> typesOfAny(const OperationRegistry& registry) {
  std::set<std::string> all;
  for (const OperationType& type : registry.operations()) {
    for (std::string& mime : typesOf(type)) all.insert(std::move(mime));
  }
  return {all.begin(), all.end()};
}

std::vector<const OperationType*> menuOperations(const OperationRegistry& registry) {
  std::vector<const OperationType*> found;
  for (const OperationType& type : registry.operations()) {
    if (type.isBuilt() && !type.isInteractive() && !typesOf(type).empty()) found.push_back(&type);
  }
  return found;
}

}  // namespace quirn::desktop
