// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "platform/preferences.h"

#include <cstdlib>
#include <fstream>
#include <span>
#include <sstream>
#include <system_error>

#include "platform/readable_file.h"
#include "platform/uuid.h"

namespace quirn::platform {
namespace fs = std::filesystem;
namespace {

fs::path environmentPath(const char* variable) {
  const char* const value = std::getenv(variable);
  return value == nullptr ? fs::path() : fs::path(value);
}

fs::path configurationFolder() {
  // The standard has relative paths ignored.
  const fs::path chosen = environmentPath("XDG_CONFIG_HOME");
  if (chosen.is_absolute()) return chosen;
  const fs::path home = environmentPath("HOME");
  return home.is_absolute() ? home / ".config" : fs::path();
}

// Empty if there is none, it can't be read, or it is no file of ours by its size.
std::string contentOf(const fs::path& path) {
  constexpr std::int64_t mostBytes = 1 << 20;
  try {
    ReadableFile file = ReadableFile::open(path);
    if (file.size() > mostBytes) return {};
    std::string content(static_cast<std::size_t>(file.size()), '\0');
    std::size_t filled = 0;
    while (filled < content.size()) filled += file.read(std::as_writable_bytes(std::span(content).subspan(filled)));
    return content;
  } catch (const std::system_error&) {
    return {};  // Nothing that is kept here is worth more than a default.
  }
}

// One line a key. A folder's name may hold a line feed, so that is written as "\n", and "\" as
// "\\".
std::string escaped(std::string_view value) {
  std::string line;
  for (const char character : value) {
    if (character == '\\') {
      line += "\\\\";
    } else if (character == '\n') {
      line += "\\n";
    } else {
      line += character;
    }
  }
  return line;
}

std::string unescaped(std::string_view line) {
  std::string value;
  for (std::size_t i = 0; i < line.size(); ++i) {
    if (line[i] != '\\' || i + 1 == line.size()) {
      value += line[i];
    } else {
      value += line[++i] == 'n' ? '\n' : line[i];
    }
  }
  return value;
}

}  // namespace

Preferences::Preferences(std::string_view domain) {
  const fs::path folder = configurationFolder();
  if (!folder.empty()) file_ = folder / "quirn" / (std::string(domain) + ".conf");
}

Preferences Preferences::at(fs::path file) {
  Preferences preferences;
  preferences.file_ = std::move(file);
  return preferences;
}

std::map<std::string, std::string, std::less<>> Preferences::read() const {
  std::map<std::string, std::string, std::less<>> values;
  std::istringstream file(contentOf(file_));
  for (std::string line; std::getline(file, line);) {
    const std::size_t equals = line.find('=');
    if (equals == std::string::npos) continue;
    values[line.substr(0, equals)] = unescaped(std::string_view(line).substr(equals + 1));
  }
  return values;
}

std::optional<std::string> Preferences::value(std::string_view key) const {
  const auto values = read();
  const auto found = values.find(key);
  return found == values.end() ? std::nullopt : std::optional(found->second);
}

bool Preferences::setValue(std::string_view key, std::optional<std::string> value) const {
  if (file_.empty()) return false;
  auto values = read();
  if (value) {
    values[std::string(key)] = *value;
  } else {
    values.erase(std::string(key));
  }
  std::error_code error;
  fs::create_directories(file_.parent_path(), error);
  const fs::path fresh = file_.string() + "." + Uuid::random().text();
  std::ofstream stream(fresh);
  for (const auto& [name, text] : values) stream << name << '=' << escaped(text) << '\n';
  stream.close();
  if (!stream.fail()) fs::rename(fresh, file_, error);
  if (!stream.fail() && !error) return true;
  fs::remove(fresh, error);
  return false;
}

}  // namespace quirn::platform
