// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/content_type.h"

#include <cstddef>
#include <map>
#include <memory>
#include <mutex>
#include <span>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "platform/loaded_library.h"
#include "platform/readable_file.h"

namespace quirn::platform {
namespace {

// GIO reads the database. It is opened when first asked, not linked: it brings ten libraries, and a command that looks
// at no file must not wait for them.
class Gio {
 public:
  char* (*guess)(const char* name, const unsigned char* data, std::size_t size, int* uncertain) = nullptr;
  int (*isA)(const char* type, const char* ancestor) = nullptr;
  void (*free)(void*) = nullptr;

  static const Gio& loaded() {
    static const Gio gio;
    return gio;
  }

 private:
  Gio() {
    const LoadedLibrary library("libgio-2.0.so.0");
    library.find("g_content_type_guess", guess);
    library.find("g_content_type_is_a", isA);
    library.find("g_free", free);
  }
};

struct Guess {
  std::string type;
  bool isUncertain = false;
};

constexpr const char* unknownType = "application/octet-stream";

Guess guessed(const std::filesystem::path& file, std::span<const std::byte> head) {
  const Gio& gio = Gio::loaded();
  const std::string name = file.filename().string();
  int isUncertain = 0;
  const std::unique_ptr<char, void (*)(void*)> type(
      gio.guess(name.c_str(), reinterpret_cast<const unsigned char*>(head.data()), head.size(), &isUncertain),
      gio.free);
  return {type ? type.get() : unknownType, isUncertain != 0};
}

// Types that the database of Debian 12 does not have.
std::string typeMissingFromDatabase(const std::filesystem::path& name) {
  constexpr std::pair<std::string_view, std::string_view> types[] = {
      {".aar", "application/x-apple-archive"},
      {".aea", "application/x-apple-archive"},
      {".caf", "audio/x-caf"},
      {".m2v", "video/mpeg"},
      {".qoi", "image/qoi"},
  };
  std::string extension = name.extension().string();
  for (char& letter : extension) letter |= ('A' <= letter && letter <= 'Z') ? 'a' - 'A' : 0;
  for (const auto& [known, type] : types) {
    if (known == extension) return std::string(type);
  }
  return unknownType;
}

Guess guessedFromName(const std::filesystem::path& name) {
  Guess guess = guessed(name, {});
  if (guess.type != unknownType) return guess;
  guess.type = typeMissingFromDatabase(name);
  return {guess.type, guess.type == unknownType};
}

// Empty if the file is, or can't be read.
std::vector<std::byte> headOf(const std::filesystem::path& file) {
  std::vector<std::byte> head(4096);
  try {
    ReadableFile readable = ReadableFile::open(file);
    head.resize(readable.read(head));
  } catch (const std::system_error&) {
    head.clear();  // Opening it for the run will tell the person.
  }
  return head;
}

}  // namespace

std::string mimeTypeOfName(const std::filesystem::path& name) {
  return guessedFromName(name).type;
}

std::string mimeTypeOfFile(const std::filesystem::path& file) {
  const Guess named = guessedFromName(file);
  if (!named.isUncertain) return named.type;
  const std::vector<std::byte> head = headOf(file);
  return head.empty() ? named.type : guessed(file, head).type;
}

// Suggestions ask this of each of thousands of files, which have few types among them.
bool isMimeSubtype(const std::string& type, const std::string& ancestor) {
  static std::mutex mutex;
  static std::map<std::pair<std::string, std::string>, bool> known;  // guarded by mutex
  const std::scoped_lock guard(mutex);
  const auto [found, isNew] = known.try_emplace({type, ancestor}, false);
  if (isNew) found->second = Gio::loaded().isA(type.c_str(), ancestor.c_str()) != 0;
  return found->second;
}

}  // namespace quirn::platform
