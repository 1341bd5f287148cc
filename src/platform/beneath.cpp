// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/beneath.h"

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <vector>

namespace quirn::platform {
namespace {

[[noreturn]] void throwOutside() {
  throw std::system_error(EXDEV, std::generic_category(), "a name leads out of its folder");
}

FileDescriptor openInOneStep(int folder, const std::string& name, int flags) {
  open_how how{};
  how.flags = static_cast<unsigned>(flags | O_CLOEXEC);
  how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS;
  long descriptor = -1;
  // EAGAIN: something was renamed meanwhile.
  do {
    descriptor = ::syscall(SYS_openat2, folder, name.c_str(), &how, sizeof how);
  } while (descriptor < 0 && (errno == EAGAIN || errno == EINTR));
  return FileDescriptor(static_cast<int>(descriptor));
}

// The parts of the name with every ".." taken back; throws where that leaves the folder.
std::vector<std::string> partsInside(const std::string& name) {
  if (name.starts_with('/')) throwOutside();
  std::vector<std::string> parts;
  for (const std::filesystem::path& part : std::filesystem::path(name)) {
    if (part.empty() || part == ".") continue;
    if (part != "..") {
      parts.push_back(part);
    } else if (parts.empty()) {
      throwOutside();
    } else {
      parts.pop_back();
    }
  }
  return parts;
}

FileDescriptor openPartByPart(int folder, const std::string& name, int flags) {
  std::vector<std::string> parts = partsInside(name);
  if (parts.empty()) parts.emplace_back(".");
  FileDescriptor reached;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    const bool isLast = i + 1 == parts.size();
    const int from = reached ? reached.number() : folder;
    reached = FileDescriptor(
        ::openat(from, parts[i].c_str(), (isLast ? flags : O_PATH | O_DIRECTORY) | O_NOFOLLOW | O_CLOEXEC));
    if (!reached && errno == ELOOP) throwOutside();
    if (!reached) throwErrno("openat");
  }
  return reached;
}

}  // namespace

FileDescriptor openBeneath(int folder, const std::string& name, int flags) {
  // The kernel's names end at the first NUL, and what would follow was not looked at.
  if (name.find('\0') != std::string::npos) throwOutside();
  if (FileDescriptor opened = openInOneStep(folder, name, flags)) return opened;
  if (errno == ENOSYS || errno == EPERM) return openPartByPart(folder, name, flags);
  throwErrno("openat2");
}

}  // namespace quirn::platform
