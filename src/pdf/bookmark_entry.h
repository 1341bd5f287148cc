// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A row of the list of bookmarks, and the text forms of such a list.

#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/uuid.h"

namespace quirn {

struct BookmarkEntry {
  platform::Uuid id;  // new for every entry that is read
  std::string title;
  std::int64_t page = 1;  // from 1 on; one that the document doesn't have leads to its first or last page
};

// [{"title":"Introduction","page":1},…]
std::string bookmarkListText(const std::vector<BookmarkEntry>& entries);

// That form, or "1 Introduction; 5 Chapter two", where a line end separates as ";" does. Nothing for other text.
std::optional<std::vector<BookmarkEntry>> parseBookmarkList(std::string_view text);

}  // namespace quirn
