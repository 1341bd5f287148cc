// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/gzip_reader.h"

#include <algorithm>
#include <limits>

#include "archive/gzip.h"

namespace quirn {

GzipReader::GzipReader(const platform::MappedFile& file)
    : file_(file), payload_(gzipPayload(file.bytes())), window_(256 << 10) {}

std::optional<std::span<const std::byte>> GzipReader::read(std::size_t most) {
  if (!payload_) return std::nullopt;
  while (unread_.empty() && !hasEnded_) {
    if (!expandMore()) return std::nullopt;
  }
  const auto piece = unread_.first(std::min(unread_.size(), most));
  unread_ = unread_.subspan(piece.size());
  return piece;
}

bool GzipReader::expandMore() {
  using Status = platform::InflateStream::Status;
  std::span<std::byte> room(window_);
  const Status status = stream_.advance(*payload_, room);
  unread_ = std::span<const std::byte>(window_).first(window_.size() - room.size());
  size_ += unread_.size();
  hasEnded_ = status == Status::ended;
  releaseRead();
  const bool breaksOff = status == Status::unfinished && payload_->empty() && !room.empty();
  return status != Status::damaged && !breaksOff && size_ <= gzipOutputLimit;
}

void GzipReader::releaseRead() {
  constexpr std::size_t releasedAtOnce = 8 << 20;
  const std::size_t read = file_.bytes().size() - payload_->size();
  if (read - released_ < releasedAtOnce) return;
  file_.release(read);
  released_ = read;
}

bool gunzip(const platform::MappedFile& file, const ByteSink& sink) {
  GzipReader reader(file);
  for (;;) {
    const auto piece = reader.read(std::numeric_limits<std::size_t>::max());
    if (!piece) return false;
    if (piece->empty()) return true;
    sink(*piece);
  }
}

}  // namespace quirn
