// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The type of a file, and the kinds of files that operations and suggestions tell apart.
//
// The kinds follow what a person calls a file rather than how it is packed: a word processor's
// document is no archive though it is a ZIP inside, a playlist is no audio though its type begins
// with "audio/", and a compressed tar is both archive and gzip.

#pragma once

#include <atomic>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

namespace quirn {

enum class ContentKind { pdf, image, movie, video, audio, archive, gzip };

// A MIME type of the shared database. Copies share one value; all members may be called from any thread.
class ContentType {
 public:
  explicit ContentType(std::string mimeType);

  // The type of a file, found out when it is first asked for and then kept: looking into the database, and at times
  // into the file, costs more than many operations that don't ask.
  static ContentType ofFile(std::filesystem::path file);
  // The same, found out by `find`.
  static ContentType foundBy(std::function<std::string()> find);

  // Whether mimeType() costs nothing any more.
  bool isKnown() const { return shared_->isKnown; }
  const std::string& mimeType() const;
  bool conformsTo(ContentKind kind) const;

 private:
  struct Shared {
    std::once_flag finding;
    std::function<std::string()> find;  // called once; none where the type was given
    std::string mimeType;               // written once, under finding
    std::atomic<bool> isKnown = false;
  };
  std::shared_ptr<Shared> shared_ = std::make_shared<Shared>();
};

}  // namespace quirn
