// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/single_instance.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/file.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <system_error>
#include <utility>

#include "platform/temporary_folder.h"

namespace quirn::platform {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t mostBytes = 64U << 20;
constexpr timeval patience{.tv_sec = 5, .tv_usec = 0};
constexpr char taken = '!';
constexpr int millisecondsToRecover = 100;

FileDescriptor opened(const fs::path& folder) {
  FileDescriptor descriptor(::open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC));
  if (!descriptor) throwErrno("open");
  return descriptor;
}

// By way of the open folder, since the address of a socket has room for a hundred bytes only.
sockaddr_un addressIn(int folder, const std::string& name) {
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  const std::string path = "/proc/self/fd/" + std::to_string(folder) + "/" + name + ".socket";
  if (path.size() >= sizeof(address.sun_path)) throw std::system_error(ENAMETOOLONG, std::generic_category());
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  return address;
}

FileDescriptor streamSocket() {
  FileDescriptor descriptor(::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0));
  if (!descriptor) throwErrno("socket");
  return descriptor;
}

void limitWaiting(int connection) {
  ::setsockopt(connection, SOL_SOCKET, SO_RCVTIMEO, &patience, sizeof(patience));
  ::setsockopt(connection, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof(patience));
}

bool isOwn(int connection) {
  ucred peer{};
  socklen_t size = sizeof(peer);
  return ::getsockopt(connection, SOL_SOCKET, SO_PEERCRED, &peer, &size) == 0 && peer.uid == ::geteuid();
}

// Everything up to the end of the stream; nothing if that doesn't come, or is too far off.
std::optional<std::string> wholeMessage(int connection) {
  std::string message;
  std::array<char, 64 << 10> chunk{};
  for (;;) {
    const ssize_t count = ::recv(connection, chunk.data(), chunk.size(), 0);
    if (count == 0) return message;
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 || message.size() + static_cast<std::size_t>(count) > mostBytes) return std::nullopt;
    message.append(chunk.data(), static_cast<std::size_t>(count));
  }
}

bool sendAll(int connection, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = ::send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return true;
}

}  // namespace

fs::path runtimeFolder() {
  const char* const session = std::getenv("XDG_RUNTIME_DIR");
  struct stat status{};
  if (session == nullptr || *session != '/' || ::stat(session, &status) != 0 || status.st_uid != ::geteuid() ||
      (status.st_mode & (S_IRWXG | S_IRWXO)) != 0) {
    return privateTemporaryFolder();
  }
  return session;
}

SingleInstance::SingleInstance(FileDescriptor folder, std::string name, FileDescriptor lock, FileDescriptor socket)
    : folder_(std::move(folder)),
      name_(std::move(name)),
      lock_(std::move(lock)),
      socket_(std::move(socket)),
      stop_(::eventfd(0, EFD_CLOEXEC)) {
  if (!stop_) throwErrno("eventfd");
}

std::unique_ptr<SingleInstance> SingleInstance::claim(const fs::path& folder, const std::string& name) {
  FileDescriptor directory = opened(folder);
  FileDescriptor lock(::openat(directory.number(), (name + ".lock").c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW,
                               S_IRUSR | S_IWUSR));
  if (!lock) throwErrno("openat");
  if (::flock(lock.number(), LOCK_EX | LOCK_NB) != 0) {
    if (errno == EWOULDBLOCK) return nullptr;
    throwErrno("flock");
  }
  // Whoever holds the lock owns the name; what lies there is left from one that was killed.
  ::unlinkat(directory.number(), (name + ".socket").c_str(), 0);
  FileDescriptor socket = streamSocket();
  const sockaddr_un address = addressIn(directory.number(), name);
  if (::bind(socket.number(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) throwErrno("bind");
  if (::listen(socket.number(), SOMAXCONN) != 0) throwErrno("listen");
  return std::unique_ptr<SingleInstance>(
      // std::make_unique can't reach the constructor.
      new SingleInstance(std::move(directory), name, std::move(lock), std::move(socket)));
}

SingleInstance::~SingleInstance() {
  if (thread_.joinable()) {
    ::eventfd_write(stop_.number(), 1);
    thread_.join();
  }
  ::unlinkat(folder_.number(), (name_ + ".socket").c_str(), 0);
}

void SingleInstance::listen(Receiver receive) {
  thread_ = std::thread([this, receive = std::move(receive)] { serve(receive); });
}

void SingleInstance::serve(const Receiver& receive) const {
  std::array<pollfd, 2> watched{pollfd{socket_.number(), POLLIN, 0}, pollfd{stop_.number(), POLLIN, 0}};
  for (;;) {
    if (::poll(watched.data(), watched.size(), -1) < 0 && errno != EINTR) return;
    if (watched[1].revents != 0) return;
    const FileDescriptor connection(::accept4(socket_.number(), nullptr, nullptr, SOCK_CLOEXEC));
    if (!connection) {
      // Out of descriptors, most likely: the one who waits is still there when some have come free.
      ::poll(&watched[1], 1, millisecondsToRecover);
      continue;
    }
    if (!isOwn(connection.number())) continue;
    limitWaiting(connection.number());
    auto message = wholeMessage(connection.number());
    if (!message) continue;
    receive(std::move(*message));
    sendAll(connection.number(), {&taken, 1});
  }
}

bool SingleInstance::handOver(const fs::path& folder, const std::string& name, std::string_view message) {
  const FileDescriptor directory = opened(folder);
  const FileDescriptor connection = streamSocket();
  const sockaddr_un address = addressIn(directory.number(), name);
  limitWaiting(connection.number());
  if (::connect(connection.number(), reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) return false;
  if (!isOwn(connection.number()) || !sendAll(connection.number(), message)) return false;
  ::shutdown(connection.number(), SHUT_WR);
  char answer = 0;
  return ::recv(connection.number(), &answer, 1, 0) == 1 && answer == taken;
}

}  // namespace quirn::platform
