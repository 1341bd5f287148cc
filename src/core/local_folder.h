// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A folder output of a run in this process.

#pragma once

#include <functional>
#include <system_error>

#include "core/staged_folder.h"
#include "platform/staged_tree.h"

namespace quirn {

class LocalFolder final : public StagedFolder {
 public:
  using Publish = std::function<OutputFile(platform::StagedTree&, OutputRole)>;

  LocalFolder(std::filesystem::path url, platform::StagedTree tree, Publish publish)
      : url_(std::move(url)), tree_(std::move(tree)), publish_(std::move(publish)) {}

  const std::filesystem::path& url() const override { return url_; }
  void makeFolder(std::string_view name) override;
  int begin(std::string_view name, Date modified) override;
  void abandonFile() override;
  void write(std::string_view name, std::span<const std::byte> bytes, Date modified) override;
  bool link(std::string_view name, std::string_view target) override;
  void settle() override { endFile(); }
  OutputFile publish(OutputRole role) override;

 private:
  // Gives the file that is open its date, which writing would have changed.
  void endFile();
  [[noreturn]] void throwFor(std::string_view name, const std::system_error& error) const;

  std::filesystem::path url_;
  platform::StagedTree tree_;
  Publish publish_;
  platform::FileDescriptor file_;
  std::string name_;  // of that file
  Date modified_;
};

}  // namespace quirn
