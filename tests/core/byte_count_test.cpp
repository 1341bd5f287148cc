// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/byte_count.h"

#include <gtest/gtest.h>

#include <limits>

namespace quirn::tests {
namespace {

TEST(ByteCount, ReadsAsFileManagersShowIt) {
  struct Row {
    std::int64_t bytes;
    std::string text;
  };
  const Row rows[] = {{0, "Zero KB"},
                      {1, "1 byte"},
                      {999, "999 bytes"},
                      {1000, "1 KB"},
                      {1499, "1 KB"},
                      {1500, "2 KB"},
                      {999'499, "999 KB"},
                      {999'500, "1 MB"},
                      {1'234'567, "1.2 MB"},
                      {12'000'000, "12 MB"},
                      {999'950'000, "1 GB"},
                      {1'234'567'890, "1.23 GB"},
                      {1'500'000'000, "1.5 GB"},
                      {-1500, "-2 KB"},
                      {std::numeric_limits<std::int64_t>::max(), "9.22 EB"}};
  for (const Row& row : rows) EXPECT_EQ(byteCountText(row.bytes), row.text) << row.bytes;
}

}  // namespace
}  // namespace quirn::tests
