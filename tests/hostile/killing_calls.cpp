// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "hostile/killing_calls.h"

#include <fcntl.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <atomic>
#include <csignal>

namespace quirn::hostile {
namespace {

std::atomic<int> callsLeft = 0;

void count() {
  if (callsLeft.fetch_sub(1) == 1) ::kill(::getpid(), SIGKILL);
}

}  // namespace

void killAtCall(int number) {
  callsLeft = number;
}

}  // namespace quirn::hostile

// These take the place of the C library's in the whole program.
extern "C" {

ssize_t write(int descriptor, const void* bytes, size_t size) {
  quirn::hostile::count();
  return ::syscall(SYS_write, descriptor, bytes, size);
}

int mkdirat(int folder, const char* name, mode_t mode) noexcept {
  quirn::hostile::count();
  return static_cast<int>(::syscall(SYS_mkdirat, folder, name, mode));
}

int linkat(int from, const char* name, int to, const char* newName, int flags) noexcept {
  quirn::hostile::count();
  return static_cast<int>(::syscall(SYS_linkat, from, name, to, newName, flags));
}

int renameat2(int from, const char* name, int to, const char* newName, unsigned flags) noexcept {
  quirn::hostile::count();
  return static_cast<int>(::syscall(SYS_renameat2, from, name, to, newName, flags));
}

int symlinkat(const char* target, int folder, const char* name) noexcept {
  quirn::hostile::count();
  return static_cast<int>(::syscall(SYS_symlinkat, target, folder, name));
}

int unlinkat(int folder, const char* name, int flags) noexcept {
  quirn::hostile::count();
  return static_cast<int>(::syscall(SYS_unlinkat, folder, name, flags));
}

int futimens(int descriptor, const timespec* times) noexcept {
  quirn::hostile::count();
  return static_cast<int>(::syscall(SYS_utimensat, descriptor, nullptr, times, 0));
}

int fsync(int descriptor) {
  quirn::hostile::count();
  return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

int syncfs(int descriptor) noexcept {
  quirn::hostile::count();
  return static_cast<int>(::syscall(SYS_syncfs, descriptor));
}

}  // extern "C"
