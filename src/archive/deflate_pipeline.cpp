// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/deflate_pipeline.h"

#include <algorithm>
#include <utility>

namespace quirn {

using platform::Bytes;
using platform::DeflatePiece;

void DeflatePipeline::write(std::span<const std::byte> bytes) {
  platform::crc32Update(crcState_, bytes);
  size_ += bytes.size();
  while (!bytes.empty()) {
    // A full piece waits for more, since the last one is made otherwise.
    if (gathered_.size() == platform::deflatePieceSize) beginPiece(DeflatePiece::continued);
    gathered_.reserve(platform::deflatePieceSize);
    const auto part = bytes.first(std::min(bytes.size(), platform::deflatePieceSize - gathered_.size()));
    platform::append(gathered_, part);
    bytes = bytes.subspan(part.size());
  }
}

void DeflatePipeline::beginPiece(DeflatePiece piece) {
  const auto most = static_cast<std::size_t>(platform::activeProcessorCount()) + 1;
  while (pieces_.size() >= most) takePiece();
  pieces_.begin([bytes = std::move(gathered_), piece] { return platform::deflatedPiece(bytes, piece); });
  gathered_ = Bytes();
}

void DeflatePipeline::finish() {
  beginPiece(DeflatePiece::last);
  while (!pieces_.isEmpty()) takePiece();
}

}  // namespace quirn
