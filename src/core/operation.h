// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What an operation is: a small stateless class that states what it is called, what it accepts and
// what can be set through static members, and runs through one virtual function.
// docs/adding-an-operation.md shows a whole one.
//
// The static members of every operation:
//   static const OperationInfo& info();
//   static const AcceptedInputs& accepts();
// and where the record can't say it,
//   static bool canRun(std::span<const InputFile> inputs);
// and where several share a configuration record that has no panel of its own,
//   static Panel panel();
// where settings are read from the inputs, as those marked `fromInput()` and the facts in its panel are,
//   static Config configurationFor(std::span<const InputFile> inputs, OperationContext& context);
// What it may add, each with the default that holds without it:
//   static constexpr Placement placement = Placement::boxed;
//   static constexpr std::string_view module;             // of the heavy library it stands on; none
//   static constexpr bool readsNeighbours = false;        // may call OperationContext::openNeighbour
//   static constexpr std::array budgets{Budget::pixels};  // on top of those of every box; none

#pragma once

#include <fmt/format.h>

#include <memory>
#include <span>
#include <string_view>
#include <typeinfo>
#include <vector>

#include "core/accepted_inputs.h"
#include "core/batch.h"
#include "core/input_file.h"
#include "core/operation_category.h"
#include "core/operation_context.h"
#include "core/operation_error.h"
#include "core/operation_result.h"
#include "core/panel.h"

namespace quirn {

// Where an operation's code may run. In process belong digests, copies and our own code on bytes
// that it doesn't interpret much; what parses files from strangers is boxed.
enum class Placement { inProcess, boxed };

struct OperationInfo {
  std::string_view operationID;  // unique, lower case, "category.verb-object"; it never changes
  std::string_view displayName;
  std::string_view iconName;  // of a symbol in the icon set
  OperationCategory category;
  std::vector<std::string_view> aliases;  // lower-case search words
  std::string_view about;                 // one sentence: what the person gets
};

class QuirnOperation {
 public:
  virtual ~QuirnOperation() = default;

  // Processes the inputs with the default settings. Blocks. Throws OperationError or
  // CancellationError. Holds for every run function: inputs are never changed, and a run may be
  // under way on several threads at once.
  virtual OperationResult run(std::span<const InputFile> inputs, OperationContext& context) const = 0;
};

// One output for each input; the batch driver does the rest.
class PerFileOperation : public QuirnOperation {
 public:
  virtual OutputFile processFile(const InputFile& input, OperationContext& context) const = 0;

  OperationResult run(std::span<const InputFile> inputs, OperationContext& context) const final {
    return runBatch(inputs, context, [&](const InputFile& input) { return processFile(input, context); });
  }
};

// An operation with settings, of whichever record.
class AnyConfigurableOperation : public QuirnOperation {
 public:
  // Throws unsupportedInput for a record of another operation.
  virtual OperationResult runConfigured(std::span<const InputFile> inputs, const OperationConfig& config,
                                        OperationContext& context) const = 0;
};

template <class ConfigType>
class ConfigurableOperation : public AnyConfigurableOperation {
 public:
  using Config = ConfigType;

  OperationResult run(std::span<const InputFile> inputs, OperationContext& context) const final {
    return runConfigured(inputs, Config(), context);
  }

  OperationResult runConfigured(std::span<const InputFile> inputs, const OperationConfig& config,
                                OperationContext& context) const final {
    if (typeid(config) != typeid(Config)) throw OperationError::unsupportedInput("Bad config.");
    context.checkCancellation();
    return runWith(inputs, static_cast<const Config&>(config), context);
  }

 protected:
  virtual OperationResult runWith(std::span<const InputFile> inputs, const Config& config,
                                  OperationContext& context) const = 0;
};

// One output for each input, with settings.
template <class ConfigType>
class ConfigurablePerFileOperation : public ConfigurableOperation<ConfigType> {
 public:
  virtual OutputFile processFileConfigured(const InputFile& input, const ConfigType& config,
                                           OperationContext& context) const = 0;

 protected:
  OperationResult runWith(std::span<const InputFile> inputs, const ConfigType& config,
                          OperationContext& context) const final {
    return runBatch(inputs, context,
                    [&](const InputFile& input) { return processFileConfigured(input, config, context); });
  }
};

// An operation that a person works in; it can't run by itself.
class AnyInteractiveOperation : public QuirnOperation {
 public:
  OperationResult run(std::span<const InputFile>, OperationContext&) const final {
    throw OperationError::unsupportedInput(fmt::format("{} is interactive.", displayName()));
  }

 private:
  virtual std::string_view displayName() const = 0;
};

template <class Derived>
class InteractiveOperation : public AnyInteractiveOperation {
 private:
  std::string_view displayName() const final { return Derived::info().displayName; }
};

}  // namespace quirn
