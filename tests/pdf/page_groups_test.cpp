// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pdf/page_groups.h"

#include <gtest/gtest.h>

namespace quirn::tests {
namespace {

std::string described(const std::vector<PageGroup>& groups) {
  std::string text;
  for (const PageGroup& group : groups) text += fmt::format("{}-{} ", group.first + 1, group.first + group.count);
  return text;
}

TEST(PageGroups, FollowTheRangesThatAPersonWrites) {
  struct Row {
    std::string text;
    std::size_t pageCount;
    std::string groups;
  };
  const std::vector<Row> rows{
      {"1-3, 5, 8-10", 9, "1-3 5-5 8-9 "},
      {"8-999", 10, "8-10 "},
      {"3, 1-2, 3, 1-3", 3, "3-3 1-2 3-3 1-3 "},
      {" 2 - 3 ,,\t4", 9, "2-3 4-4 "},
      {"+2, +1-+3", 9, "2-2 1-3 "},
      {"3-1", 9, ""},
      {"7-3, abc, 0, -3, 10, 10-12, 1-2-3, ++1, +-1, 1.5, -, 0-2", 9, ""},
      {"99999999999999999999, 1-99999999999999999999, 2", 9, "2-2 "},
      {"1-9223372036854775807", 9, "1-9 "},
      {"", 9, ""},
      {"1", 0, ""},
  };
  for (const Row& row : rows) EXPECT_EQ(described(groupsOfRanges(row.text, row.pageCount)), row.groups) << row.text;
}

TEST(PageGroups, HoldEveryNPagesAndTheRest) {
  EXPECT_EQ(described(groupsOfEvery(2, 5)), "1-2 3-4 5-5 ");
  EXPECT_EQ(described(groupsOfEvery(0, 2)), "1-1 2-2 ") << "0 behaves as 1";
  EXPECT_EQ(described(groupsOfEvery(9, 2)), "1-2 ");
  EXPECT_EQ(described(groupsOfEvery(1, 0)), "");
}

}  // namespace
}  // namespace quirn::tests
