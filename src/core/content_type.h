// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The type of a file, and the kinds of files that operations and suggestions tell apart.
//
// The kinds follow what a person calls a file rather than how it is packed: a word processor's
// document is no archive though it is a ZIP inside, a playlist is no audio though its type begins
// with "audio/", and a compressed tar is both archive and gzip.

#pragma once

#include <string>
#include <utility>

namespace quirn {

enum class ContentKind { pdf, image, movie, video, audio, archive, gzip };

// A MIME type of the shared database.
class ContentType {
 public:
  explicit ContentType(std::string mimeType) : mimeType_(std::move(mimeType)) {}

  const std::string& mimeType() const { return mimeType_; }
  bool conformsTo(ContentKind kind) const;

 private:
  std::string mimeType_;
};

}  // namespace quirn
