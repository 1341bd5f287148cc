// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Operations for tests of the box: a decoder in a stranger's hands, and honest ones that use all that a context gives.
// They are in a module that only the tests' worker finds, and in the test program itself.

#pragma once

#include "core/operation.h"

namespace quirn::hostile {

// Does what the first word of its input says, with the others as arguments. "honest" copies the rest; an attack that
// the system refuses ends in the sentence "{attack} was refused.", one that succeeds in an output.
class DecoderOperation final : public PerFileOperation {
 public:
  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OutputFile processFile(const InputFile& input, OperationContext& context) const override;
};

struct EchoConfig : OperationConfig {
  enum class Colour { red, green };
  Colour colour = Colour::red;
  bool loud = false;
  int count = 1;
  double ratio = 0.5;
  std::string text;

  static Panel panel();
};

// Writes its settings.
class EchoOperation final : public ConfigurablePerFileOperation<EchoConfig> {
 public:
  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OutputFile processFileConfigured(const InputFile& input, const EchoConfig& config,
                                   OperationContext& context) const override;
};

// Makes one file of all inputs and of what is beneath those that are folders, counting files as progress; a file that
// says "bad" is a failure, "fault" ends the run with a fault of ours, "stop" waits until it is stopped.
class MergeOperation final : public QuirnOperation {
 public:
  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OperationResult run(std::span<const InputFile> inputs, OperationContext& context) const override;
};

// Makes a folder of what the lines of its input say: "folder NAME", "file NAME CONTENT", "large NAME BYTES", "abandon
// NAME CONTENT", "link NAME TARGET", "publish"; "drop" leaves it unpublished. What was made stays when a line fails.
class UnpackOperation final : public PerFileOperation {
 public:
  static const OperationInfo& info();
  static const AcceptedInputs& accepts();
  OutputFile processFile(const InputFile& input, OperationContext& context) const override;
};

}  // namespace quirn::hostile
