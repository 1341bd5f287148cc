// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/content_type.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <string_view>
#include <utility>

#include "platform/content_type.h"

namespace quirn {
namespace {

using Types = std::span<const std::string_view>;

// Containers of film and sound that the database files under "application/".
constexpr std::string_view videoContainers[] = {
    "application/annodex",          "application/mxf",        "application/ogg", "application/vnd.ms-asf",
    "application/vnd.rn-realmedia", "application/x-matroska",
};

constexpr std::string_view audioContainers[] = {"application/x-shorten"};

// Lists of addresses: text, for a media tool to refuse.
constexpr std::string_view playlists[] = {
    "audio/x-iriver-pla", "audio/x-mpegurl", "audio/x-ms-asx", "audio/x-scpls", "video/vnd.mpegurl",
};

// Types, not their subtypes: most subtypes of ZIP are documents of an office, books or maps, which
// nobody thinks of as a box to be unpacked. Those that are one stand here by themselves.
constexpr std::string_view archives[] = {
    "application/gzip",
    "application/mac-binhex40",
    "application/vnd.android.package-archive",
    "application/vnd.comicbook+zip",
    "application/vnd.comicbook-rar",
    "application/vnd.debian.binary-package",
    "application/vnd.ms-cab-compressed",
    "application/vnd.rar",
    "application/vnd.snap",
    "application/x-7z-compressed",
    "application/x-ace",
    "application/x-alz",
    "application/x-apple-archive",
    "application/x-apple-diskimage",
    "application/x-arc",
    "application/x-archive",
    "application/x-arj",
    "application/x-bcpio",
    "application/x-bzip",
    "application/x-bzip-compressed-tar",
    "application/x-cb7",
    "application/x-cbt",
    "application/x-cd-image",
    "application/x-compress",
    "application/x-compressed-tar",
    "application/x-cpio",
    "application/x-cpio-compressed",
    "application/x-dar",
    "application/x-java-archive",
    "application/x-lha",
    "application/x-lhz",
    "application/x-lrzip",
    "application/x-lrzip-compressed-tar",
    "application/x-lz4",
    "application/x-lz4-compressed-tar",
    "application/x-lzip",
    "application/x-lzip-compressed-tar",
    "application/x-lzma",
    "application/x-lzma-compressed-tar",
    "application/x-lzop",
    "application/x-ms-wim",
    "application/x-rpm",
    "application/x-source-rpm",
    "application/x-stuffit",
    "application/x-sv4cpio",
    "application/x-sv4crc",
    "application/x-tar",
    "application/x-tarz",
    "application/x-tzo",
    "application/x-ustar",
    "application/x-xar",
    "application/x-xpinstall",
    "application/x-xz",
    "application/x-xz-compressed-tar",
    "application/x-zoo",
    "application/x-zstd-compressed-tar",
    "application/zip",
    "application/zlib",
    "application/zstd",
};

static_assert(std::ranges::is_sorted(archives), "it is searched by halving");

bool isAmong(const std::string& type, Types types) {
  return std::ranges::find(types, type) != types.end();
}

bool isVideo(const std::string& type) {
  return (type.starts_with("video/") && !isAmong(type, playlists)) || isAmong(type, videoContainers);
}

bool isAudio(const std::string& type) {
  return (type.starts_with("audio/") && !isAmong(type, playlists)) || isAmong(type, audioContainers);
}

}  // namespace

ContentType::ContentType(std::string mimeType) {
  shared_->mimeType = std::move(mimeType);
  shared_->isKnown = true;
}

ContentType ContentType::ofFile(std::filesystem::path file) {
  return foundBy([file = std::move(file)] { return platform::mimeTypeOfFile(file); });
}

ContentType ContentType::foundBy(std::function<std::string()> find) {
  ContentType type{std::string()};
  type.shared_->find = std::move(find);
  type.shared_->isKnown = false;
  return type;
}

const std::string& ContentType::mimeType() const {
  std::call_once(shared_->finding, [this] {
    if (shared_->find) shared_->mimeType = shared_->find();
    shared_->isKnown = true;
  });
  return shared_->mimeType;
}

bool ContentType::conformsTo(ContentKind kind) const {
  const std::string& type = mimeType();
  switch (kind) {
    case ContentKind::pdf: return platform::isMimeSubtype(type, "application/pdf");
    case ContentKind::image: return type.starts_with("image/");
    case ContentKind::movie:
    case ContentKind::video: return isVideo(type);
    case ContentKind::audio: return isAudio(type);
    case ContentKind::archive: return std::ranges::binary_search(archives, type);
    case ContentKind::gzip: return platform::isMimeSubtype(type, "application/gzip");
  }
  return false;
}

}  // namespace quirn
