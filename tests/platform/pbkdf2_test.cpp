// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/pbkdf2.h"

namespace quirn::tests {
namespace {

using platform::Pbkdf2Salt;

std::string hexOf(std::span<const std::byte> bytes) {
  std::string hex;
  for (const std::byte byte : bytes) hex += fmt::format("{:02x}", std::to_integer<unsigned>(byte));
  return hex;
}

Pbkdf2Salt saltFrom(int first) {
  Pbkdf2Salt salt;
  for (std::byte& byte : salt) byte = static_cast<std::byte>(first++);
  return salt;
}

TEST(Pbkdf2, GivesTheKeysOfAnIndependentImplementation) {
  // Python: hashlib.pbkdf2_hmac("sha1", password, bytes(range(16)), 1000, 80).hex()
  struct Row {
    std::string password;
    std::string key;
  };
  const std::vector<Row> rows{
      {"password",
       "0309e2fe4e0bdfe7d0fe4828d41c234416e2d9bfb61cdd8f643a11cfbfdfc119e78b0eb3d9243415"
       "743b2fe4f5e67c6689bd2c3e512d0fda622dd7d1b0565b83256bde7b4cd5b4be638bc9c6a9ac98d1"},
      {std::string(100, 'x'),
       "c11dad0df341d0fd009d6a96ca3d36c8b26ff2d9d584bb8437c3face45f906b1621aec6d076c09e2"
       "3c2d0657da80f0cff21ec88f1d854f5cff421b3ef7505cff6324d5c0ac28f4aa6b85049951c2f95a"},
      {"Pässwörd",
       "05137aa4bba342c695c1ba58f5a5dbcf0f52bba366c1de536ad1b5550464da4dead29210a4947ddb"
       "372d03929234daaf1ffbe0e1e3cd0e77b6fa679eedb05dfa9967abf4d53205a2ca0a3d6d0e62df8c"},
  };
  for (const Row& row : rows)
    EXPECT_EQ(hexOf(platform::pbkdf2Sha1(row.password, std::vector{saltFrom(0)}, 1000).at(0)), row.key);
}

TEST(Pbkdf2, GivesTheSameKeysTogetherAsAlone) {
  for (int count = 0; count <= 9; ++count) {
    std::vector<Pbkdf2Salt> salts;
    for (int i = 0; i < count; ++i) salts.push_back(saltFrom(i * 7));
    const auto together = platform::pbkdf2Sha1("secret", salts, 3);
    ASSERT_EQ(together.size(), salts.size());
    for (std::size_t i = 0; i < salts.size(); ++i)
      EXPECT_EQ(together[i], platform::pbkdf2Sha1("secret", std::span(salts).subspan(i, 1), 3).at(0));
  }
}

}  // namespace
}  // namespace quirn::tests
