// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Which pages go into which file when a document is split.

#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

namespace quirn {

// Pages from 0 on, one behind the other.
struct PageGroup {
  std::size_t first = 0;
  std::size_t count = 0;
  bool operator==(const PageGroup&) const = default;
};

// Every `pagesPerChunk` pages, at least one; the last group may be shorter.
std::vector<PageGroup> groupsOfEvery(std::int64_t pagesPerChunk, std::size_t pageCount);

// "1-3, 5, 8-10", with pages from 1 on: in this order, each piece a group. A range that ends beyond the last page ends
// with it; what is no page or range of the document is left out.
std::vector<PageGroup> groupsOfRanges(std::string_view text, std::size_t pageCount);

}  // namespace quirn
