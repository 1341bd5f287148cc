// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/message_socket.h"

#include <poll.h>
#include <sys/socket.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <stdexcept>
#include <system_error>

namespace quirn::platform {
namespace {

// Room for the descriptors that a message may bring.
struct alignas(cmsghdr) ControlBuffer {
  std::array<char, CMSG_SPACE(sizeof(int) * mostDescriptors)> bytes{};
};

bool waitFor(int descriptor, short events, std::chrono::milliseconds patience) {
  pollfd wanted{descriptor, events, 0};
  return ::poll(&wanted, 1, static_cast<int>(patience.count())) > 0;
}

void attach(msghdr& message, ControlBuffer& control, std::span<const int> descriptors) {
  message.msg_control = control.bytes.data();
  message.msg_controllen = CMSG_SPACE(descriptors.size_bytes());
  cmsghdr* const header = CMSG_FIRSTHDR(&message);
  header->cmsg_level = SOL_SOCKET;
  header->cmsg_type = SCM_RIGHTS;
  header->cmsg_len = CMSG_LEN(descriptors.size_bytes());
  std::memcpy(CMSG_DATA(header), descriptors.data(), descriptors.size_bytes());
}

std::vector<FileDescriptor> attached(msghdr& message) {
  const cmsghdr* const header = CMSG_FIRSTHDR(&message);
  if (header == nullptr || header->cmsg_type != SCM_RIGHTS) return {};
  std::array<int, mostDescriptors> numbers{};
  const std::size_t size = header->cmsg_len - CMSG_LEN(0);
  std::memcpy(numbers.data(), CMSG_DATA(header), size);
  const auto present = std::span(numbers).first(size / sizeof(int));
  return {present.begin(), present.end()};
}

bool isHangUp(int error) {
  return error == ECONNRESET || error == EPIPE;
}

}  // namespace

std::pair<MessageSocket, MessageSocket> MessageSocket::pair() {
  std::array<int, 2> ends{-1, -1};
  if (::socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends.data()) != 0) throwErrno("socketpair");
  return {MessageSocket(FileDescriptor(ends[0])), MessageSocket(FileDescriptor(ends[1]))};
}

bool MessageSocket::send(std::string_view bytes, std::span<const int> descriptors,
                         std::chrono::milliseconds patience) const {
  if (bytes.size() > longestMessage || descriptors.size() > mostDescriptors)
    throw std::length_error("a message is too long");
  iovec content{const_cast<char*>(bytes.data()), bytes.size()};
  msghdr message{};
  message.msg_iov = &content;
  message.msg_iovlen = 1;
  ControlBuffer control;
  if (!descriptors.empty()) attach(message, control, descriptors);
  for (;;) {
    if (::sendmsg(descriptor_.number(), &message, MSG_NOSIGNAL | MSG_DONTWAIT) >= 0) return true;
    if (isHangUp(errno)) return false;
    if (errno == EAGAIN && !waitFor(descriptor_.number(), POLLOUT, patience)) return false;
    if (errno != EAGAIN && errno != EINTR) throwErrno("sendmsg");
  }
}

std::optional<MessageSocket::Message> MessageSocket::receive(Descriptors descriptors) const {
  // Read by one thread at a time; kept because every file needs several messages.
  thread_local std::string buffer(longestMessage, '\0');
  iovec content{buffer.data(), buffer.size()};
  msghdr message{};
  message.msg_iov = &content;
  message.msg_iovlen = 1;
  ControlBuffer control;
  if (descriptors == Descriptors::accepted) {
    message.msg_control = control.bytes.data();
    message.msg_controllen = control.bytes.size();
  }
  ssize_t count = 0;
  do {
    count = ::recvmsg(descriptor_.number(), &message, MSG_CMSG_CLOEXEC);
  } while (count < 0 && errno == EINTR);
  if (count < 0 && !isHangUp(errno)) throwErrno("recvmsg");
  Message received{{}, attached(message)};
  if (count < 0) return std::nullopt;
  if ((message.msg_flags & (MSG_TRUNC | MSG_CTRUNC)) != 0)
    throw std::system_error(EBADMSG, std::generic_category(), "recvmsg");
  if (count == 0) return std::nullopt;
  received.bytes.assign(buffer, 0, static_cast<std::size_t>(count));
  return received;
}

bool MessageSocket::waitForMessage(std::chrono::milliseconds patience) const {
  return waitFor(descriptor_.number(), POLLIN, patience);
}

}  // namespace quirn::platform
