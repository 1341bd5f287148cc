// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A walk through a TAR archive whose bytes come one behind another: the entries in order, up to the end or to where the
// archive is damaged. Checksums are not looked at.

#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <span>

#include "archive/tar.h"
#include "platform/bytes.h"

namespace quirn {

class TarWalk {
 public:
  // Gives the next bytes of the archive, at least one and at most so many, and keeps them until it is called again.
  // None is taken for the end.
  using Source = std::function<std::span<const std::byte>(std::size_t most)>;

  // `size` is what the source gives in all. All calls throw what the source throws.
  TarWalk(Source source, std::uint64_t size) : source_(std::move(source)), size_(size) {}

  // Goes on to the next entry, past what is left of the data of the last one.
  std::optional<TarEntry> next();

  // Whether the archive holds all of the entry's data.
  bool isWhole() const { return isWhole_; }
  // The next bytes of the entry's data, at most so many; none at its end. Kept until the next call of any kind.
  std::span<const std::byte> read(std::size_t most);
  // All that is left of the entry's data, in one run. Kept likewise.
  std::span<const std::byte> readAll();

 private:
  std::uint64_t left() const { return size_ - position_; }
  std::span<const std::byte> take(std::uint64_t most);
  void skip(std::uint64_t count);
  std::optional<TarBlock> readBlock();

  Source source_;
  std::uint64_t size_;
  std::uint64_t position_ = 0;
  std::uint64_t dataLeft_ = 0;  // of the entry
  std::uint64_t padding_ = 0;   // behind it
  bool isWhole_ = true;
  platform::Bytes gathered_;
};

// The archive lies in memory, and stays there.
TarWalk::Source sourceOver(std::span<const std::byte> archive);

}  // namespace quirn
