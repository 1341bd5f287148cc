// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// An output inside a worker. A small one of an operation on single files is kept here until it is whole and then
// travels in a message that needs no answer; any other is staged by the program, and the worker writes to its
// descriptor.

#pragma once

#include <string>

#include "core/box/boxed_context.h"
#include "core/staged_output.h"
#include "platform/file_descriptor.h"

namespace quirn::box {

class BoxedOutput final : public StagedOutput {
 public:
  enum class Staging { atOnce, whenNeeded };

  BoxedOutput(BoxedContext& context, const InputFile& beside, OutputNaming naming, Staging staging);
  // Discards what the program has staged.
  ~BoxedOutput() override;
  BoxedOutput(const BoxedOutput&) = delete;
  BoxedOutput& operator=(const BoxedOutput&) = delete;

  void write(std::span<const std::byte> bytes) override;
  int descriptor() const override;
  const std::filesystem::path& url() const override;
  OutputFile publish(OutputRole role) override;

 private:
  bool isStaged() const { return static_cast<bool>(descriptor_); }
  void stage() const;
  OutputFile publishWhole(OutputRole role);

  BoxedContext& context_;
  InputFile beside_;
  OutputNaming naming_;
  // All of this changes when the program stages the output, at the first call that needs it.
  mutable std::int64_t number_ = 0;
  mutable std::filesystem::path url_;
  mutable platform::FileDescriptor descriptor_;
  mutable std::string content_;  // until then
};

}  // namespace quirn::box
