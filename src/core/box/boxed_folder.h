// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// A folder output inside a worker. Small files travel as messages that need no answer, so that the program makes files
// while the worker unpacks the next; for larger ones it opens a file and the worker writes.

#pragma once

#include "core/box/boxed_context.h"
#include "core/staged_folder.h"
#include "platform/file_descriptor.h"

namespace quirn::box {

class BoxedFolder final : public StagedFolder {
 public:
  BoxedFolder(BoxedContext& context, std::int64_t number, std::filesystem::path url)
      : context_(context), number_(number), url_(std::move(url)) {}
  ~BoxedFolder() override;
  BoxedFolder(const BoxedFolder&) = delete;
  BoxedFolder& operator=(const BoxedFolder&) = delete;

  const std::filesystem::path& url() const override { return url_; }
  void makeFolder(std::string_view name) override;
  int begin(std::string_view name, Date modified) override;
  void abandonFile() override;
  void write(std::string_view name, std::span<const std::byte> bytes, Date modified) override;
  bool link(std::string_view name, std::string_view target) override;
  void settle() override;
  OutputFile publish(OutputRole role) override;

 private:
  MessageWriter message(Ask kind) const;

  BoxedContext& context_;
  std::int64_t number_;
  std::filesystem::path url_;
  platform::FileDescriptor file_;
  bool isPublished_ = false;
};

}  // namespace quirn::box
