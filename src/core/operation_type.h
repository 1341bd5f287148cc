// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// An operation as a value: its static description, and how to make one. The registry, the front
// ends and the runner know operations only through this. Most are made from a class; those that
// differ only in data are made from a record, one class for all of them.

#pragma once

#include <functional>
#include <memory>
#include <span>
#include <type_traits>

#include "core/budgets.h"
#include "core/operation.h"

namespace quirn {

class OperationType {
 public:
  template <class Operation>
  static OperationType of();

  // An operation without a class of its own.
  struct Record {
    OperationInfo info;
    AcceptedInputs accepts;
    std::function<std::unique_ptr<QuirnOperation>()> make;
    bool isInteractive = false;
  };
  static OperationType of(Record record);

  // An operation that has its identity and nothing else yet. It runs on nothing.
  static OperationType unbuilt(OperationInfo info);

  // The description alone, of an operation whose code is in a module. Links nothing of that code.
  template <class Operation>
  static OperationType describedBy();

  const OperationInfo& info() const { return *info_; }
  const AcceptedInputs& accepts() const { return *accepts_; }

  // Whether the operation can run on exactly these inputs. Cheap; never looks into a file.
  bool canRun(std::span<const InputFile> inputs) const { return canRun_(inputs); }

  // False for one that can only be listed.
  bool isBuilt() const { return make_ != nullptr || !module_.empty(); }
  bool isConfigurable() const { return makeConfig_ != nullptr; }
  bool isInteractive() const { return isInteractive_; }
  // Every input is processed by itself, so one that fails doesn't spoil the others.
  bool isPerFile() const { return isPerFile_; }

  // A new record with the defaults. Only where isConfigurable().
  std::unique_ptr<OperationConfig> defaultConfig() const { return makeConfig_(); }
  // Whether its panel shows what is read from the inputs.
  bool isConfiguredFromInputs() const { return defaultPanel().isFromInput(); }
  // A new record with what the inputs say, and the defaults for the rest. Throws OperationError. Only where
  // isConfiguredFromInputs(), and not of a described one; front ends ask Box::configurationFor().
  std::unique_ptr<OperationConfig> configurationFor(std::span<const InputFile> inputs,
                                                    OperationContext& context) const {
    return configurationFor_(inputs, context);
  }
  // Whether the record is this operation's own.
  bool owns(const OperationConfig& config) const { return ownsConfig_ && ownsConfig_(config); }
  // A copy of a record of this operation; of another's, one that the run refuses.
  std::unique_ptr<OperationConfig> copyOf(const OperationConfig& config) const { return copyConfig_(config); }
  // The controls for such a record; none for a record of another operation, or without settings.
  Panel configPanel(const OperationConfig& config) const { return panel_ ? panel_(config) : Panel(); }
  // The controls for the default record; none without settings.
  Panel defaultPanel() const { return isConfigurable() ? configPanel(*defaultConfig()) : Panel(); }

  // Where its code may run.
  Placement placement() const { return placement_; }
  // The shared module that holds its code; empty where that is in the program itself.
  std::string_view module() const { return module_; }
  // Whether it opens files that an input names.
  bool readsNeighbours() const { return readsNeighbours_; }
  // What a file may cost; none for an operation that runs in process.
  std::vector<Budget> budgets() const;
  // The same operation elsewhere, to compare the two.
  OperationType placedIn(Placement placement, std::string_view module = {}) const;

  // The value that runs once and is dropped. Not of one that isn't built or is described alone.
  std::unique_ptr<QuirnOperation> make() const { return make_(); }
  // Processes one input; `config` is of this operation, or any where there are no settings. Only
  // where isPerFile(), and not of a described one.
  OutputFile processFile(const InputFile& input, const OperationConfig& config, OperationContext& context) const {
    return processFile_(input, config, context);
  }
  bool isDescriptionAlone() const { return make_ == nullptr; }

 private:
  OperationType() = default;

  std::shared_ptr<const OperationInfo> info_;
  std::shared_ptr<const AcceptedInputs> accepts_;
  bool isInteractive_ = false;
  bool isPerFile_ = false;
  bool readsNeighbours_ = false;
  Placement placement_ = Placement::boxed;
  std::string_view module_;
  std::vector<Budget> ownBudgets_;
  std::function<OutputFile(const InputFile&, const OperationConfig&, OperationContext&)> processFile_;
  std::function<bool(std::span<const InputFile>)> canRun_;
  std::function<std::unique_ptr<QuirnOperation>()> make_;
  std::function<std::unique_ptr<OperationConfig>()> makeConfig_;
  std::function<std::unique_ptr<OperationConfig>(const OperationConfig&)> copyConfig_;
  std::function<std::unique_ptr<OperationConfig>(std::span<const InputFile>, OperationContext&)> configurationFor_;
  std::function<bool(const OperationConfig&)> ownsConfig_;
  std::function<Panel(const OperationConfig&)> panel_;
};

namespace detail {

// A pointer to what lives as long as the program.
template <class Value>
std::shared_ptr<const Value> unowned(const Value& value) {
  return {std::shared_ptr<const Value>(), &value};
}

template <class Operation>
concept HasOwnTest = requires(std::span<const InputFile> inputs) {
  { Operation::canRun(inputs) } -> std::same_as<bool>;
};

template <class Operation>
concept HasConfig = requires { typename Operation::Config; };

template <class Operation>
concept ReadsConfiguration = requires { &Operation::configurationFor; };

template <class Operation>
concept HasOwnPanel = requires {
  { Operation::panel() } -> std::same_as<Panel>;
};

template <class Operation>
concept IsPerFile = std::is_base_of_v<PerFileOperation, Operation> ||
                    (HasConfig<Operation> && requires { &Operation::processFileConfigured; });

template <class Operation>
concept StatesPlacement = requires { Operation::placement; };

template <class Operation>
concept StatesModule = requires { Operation::module; };

template <class Operation>
concept StatesNeighbours = requires { Operation::readsNeighbours; };

template <class Operation>
concept StatesBudgets = requires { Operation::budgets; };

}  // namespace detail

template <class Operation>
OperationType OperationType::of() {
  OperationType type = describedBy<Operation>();
  type.make_ = [] { return std::make_unique<Operation>(); };
  if constexpr (detail::ReadsConfiguration<Operation>) {
    static_assert(!detail::IsPerFile<Operation>, "each input would have its own");
    type.configurationFor_ = [](std::span<const InputFile> inputs, OperationContext& context) {
      return std::make_unique<typename Operation::Config>(Operation::configurationFor(inputs, context));
    };
  }
  if constexpr (detail::IsPerFile<Operation>) {
    type.processFile_ = [](const InputFile& input, [[maybe_unused]] const OperationConfig& config,
                           OperationContext& context) {
      if constexpr (detail::HasConfig<Operation>) {
        return Operation().processFileConfigured(input, dynamic_cast<const typename Operation::Config&>(config),
                                                 context);
      } else {
        return Operation().processFile(input, context);
      }
    };
  }
  return type;
}

template <class Operation>
OperationType OperationType::describedBy() {
  static_assert(std::is_base_of_v<QuirnOperation, Operation>);
  OperationType type;
  type.info_ = detail::unowned(Operation::info());
  type.accepts_ = detail::unowned(Operation::accepts());
  type.isInteractive_ = std::is_base_of_v<AnyInteractiveOperation, Operation>;
  type.isPerFile_ = detail::IsPerFile<Operation>;
  if constexpr (detail::StatesPlacement<Operation>) type.placement_ = Operation::placement;
  if constexpr (detail::StatesModule<Operation>) type.module_ = Operation::module;
  if constexpr (detail::StatesNeighbours<Operation>) type.readsNeighbours_ = Operation::readsNeighbours;
  if constexpr (detail::StatesBudgets<Operation>)
    type.ownBudgets_.assign(std::begin(Operation::budgets), std::end(Operation::budgets));
  if constexpr (detail::HasOwnTest<Operation>) {
    type.canRun_ = &Operation::canRun;
  } else {
    type.canRun_ = [](std::span<const InputFile> inputs) { return Operation::accepts().accepts(inputs); };
  }
  if constexpr (detail::HasConfig<Operation>) {
    using Config = typename Operation::Config;
    type.makeConfig_ = [] { return std::make_unique<Config>(); };
    type.ownsConfig_ = [](const OperationConfig& config) { return typeid(config) == typeid(Config); };
    type.copyConfig_ = [](const OperationConfig& config) -> std::unique_ptr<OperationConfig> {
      if (typeid(config) != typeid(Config)) return std::make_unique<OperationConfig>();
      return std::make_unique<Config>(static_cast<const Config&>(config));
    };
    type.panel_ = [](const OperationConfig& config) {
      if (typeid(config) != typeid(Config)) return Panel();
      if constexpr (detail::HasOwnPanel<Operation>)
        return Operation::panel();
      else
        return Config::panel();
    };
  }
  return type;
}

}  // namespace quirn
