// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The folder that the person chose for outputs: the one thing that Quirn remembers.

#pragma once

#include <filesystem>
#include <optional>

#include "platform/preferences.h"

namespace quirn {

class OutputDirectoryStore {
 public:
  explicit OutputDirectoryStore(platform::Preferences preferences = platform::Preferences("group.com.morvanta.quirn"))
      : preferences_(std::move(preferences)) {}

  // Nothing if no folder was saved, or the saved one is no longer there.
  std::optional<std::filesystem::path> load() const;

  // False if it could not be remembered.
  bool save(const std::filesystem::path& folder) const;
  bool clear() const;

 private:
  platform::Preferences preferences_;
};

}  // namespace quirn
