// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/zip_overlap.h"

#include <algorithm>
#include <optional>

#include "archive/byte_reader.h"
#include "archive/zip_contents.h"

namespace quirn {
namespace {

struct Range {
  std::uint64_t begin = 0;
  std::uint64_t end = 0;
};

std::optional<Range> rangeOf(const ZipFileEntry& entry, std::span<const std::byte> bytes) {
  try {
    const auto payload = zipPayloadOf(entry, bytes);
    return Range{entry.localHeaderOffset, static_cast<std::uint64_t>(payload.data() + payload.size() - bytes.data())};
  } catch (const ZipError&) {
    return std::nullopt;
  } catch (const ByteReader::OutOfBounds&) {
    return std::nullopt;
  }
}

}  // namespace

bool haveOverlaps(const std::vector<ZipFileEntry>& entries, std::span<const std::byte> bytes) {
  std::vector<Range> ranges;
  for (const ZipFileEntry& entry : entries) {
    if (const auto range = rangeOf(entry, bytes)) ranges.push_back(*range);
  }
  std::ranges::sort(ranges, {}, &Range::begin);
  const auto overlap = [](const Range& one, const Range& next) { return one.end > next.begin; };
  return std::ranges::adjacent_find(ranges, overlap) != ranges.end();
}

}  // namespace quirn
