// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/message_socket.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <array>
#include <stdexcept>
#include <system_error>

namespace quirn::platform {
namespace {

constexpr std::chrono::seconds patience{10};

ino_t identityOf(int descriptor) {
  struct stat status{};
  EXPECT_EQ(::fstat(descriptor, &status), 0);
  return status.st_ino;
}

TEST(MessageSocket, BringsItsDescriptorsInOrder) {
  const auto [here, there] = MessageSocket::pair();
  const FileDescriptor root(::open("/", O_PATH | O_CLOEXEC));
  const FileDescriptor nothing(::open("/dev/null", O_RDONLY | O_CLOEXEC));
  const std::array sent{root.number(), nothing.number(), root.number()};
  ASSERT_TRUE(here.send("three", sent, patience));
  const auto message = there.receive(MessageSocket::Descriptors::accepted);
  ASSERT_TRUE(message);
  EXPECT_EQ(message->bytes, "three");
  ASSERT_EQ(message->descriptors.size(), sent.size());
  for (std::size_t i = 0; i < sent.size(); ++i)
    EXPECT_EQ(identityOf(message->descriptors[i].number()), identityOf(sent[i])) << i;
}

TEST(MessageSocket, RefusesDescriptorsThatAreNotWanted) {
  const auto [here, there] = MessageSocket::pair();
  const std::array sent{here.descriptor(), there.descriptor()};
  ASSERT_TRUE(here.send("x", sent, patience));
  EXPECT_THROW(there.receive(MessageSocket::Descriptors::refused), std::system_error);
}

TEST(MessageSocket, SendsNoMoreThanTheOtherEndHasRoomFor) {
  const auto [here, there] = MessageSocket::pair();
  const std::vector<int> many(mostDescriptors + 1, here.descriptor());
  EXPECT_THROW(here.send("x", many, patience), std::length_error);
  EXPECT_THROW(here.send(std::string(longestMessage + 1, 'x'), {}, patience), std::length_error);
  ASSERT_TRUE(here.send(std::string(longestMessage, 'x'), std::span(many).first(mostDescriptors), patience));
  EXPECT_EQ(there.receive(MessageSocket::Descriptors::accepted)->descriptors.size(), mostDescriptors);
}

}  // namespace
}  // namespace quirn::platform
