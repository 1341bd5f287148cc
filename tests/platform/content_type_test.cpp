// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/content_type.h"

#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

TEST(ContentTypeOfFile, IsReadFromTheFileWhereTheNameLeavesItOpen) {
  const TemporaryFolder folder;
  std::string film;
  for (int packet = 0; packet < 5; ++packet) film.append("G@\0\x10", 4).append(184, '\0');
  EXPECT_EQ(platform::mimeTypeOfFile(folder.file("film.ts", film)), "video/mp2t");
  EXPECT_EQ(platform::mimeTypeOfFile(folder.file("download", "%PDF-1.7\n")), "application/pdf");
  EXPECT_EQ(platform::mimeTypeOfFile(folder.file("named.txt", "%PDF-1.7\n")), "text/plain");
  EXPECT_EQ(platform::mimeTypeOfFile(folder.file("empty", "")), "application/octet-stream");
  EXPECT_EQ(platform::mimeTypeOfFile("/gone/empty"), "application/octet-stream");
}

}  // namespace
}  // namespace quirn::tests
