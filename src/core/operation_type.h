// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// An operation as a value: its static description, and how to make one. The registry, the front
// ends and the runner know operations only through this.

#pragma once

#include <functional>
#include <memory>
#include <span>
#include <type_traits>

#include "core/operation.h"

namespace quirn {

class OperationType {
 public:
  template <class Operation>
  static OperationType of();

  // An interactive operation that is described by values instead of by a class.
  static OperationType interactive(std::shared_ptr<const OperationInfo> info,
                                   std::shared_ptr<const AcceptedInputs> accepts);

  const OperationInfo& info() const { return *info_; }
  const AcceptedInputs& accepts() const { return *accepts_; }

  // Whether the operation can run on exactly these inputs. Cheap; never looks into a file.
  bool canRun(std::span<const InputFile> inputs) const { return canRun_(inputs); }

  bool isConfigurable() const { return makeConfig_ != nullptr; }
  bool isInteractive() const { return isInteractive_; }
  // Every input is processed by itself, so one that fails doesn't spoil the others.
  bool isPerFile() const { return isPerFile_; }

  // A new record with the defaults. Only where isConfigurable().
  std::unique_ptr<OperationConfig> defaultConfig() const { return makeConfig_(); }
  // A copy of a record of this operation.
  std::unique_ptr<OperationConfig> copyOf(const OperationConfig& config) const { return copyConfig_(config); }
  // The controls for such a record; none for a record of another operation, or without settings.
  Panel configPanel(const OperationConfig& config) const { return panel_ ? panel_(config) : Panel(); }
  // The controls for the default record; none without settings.
  Panel defaultPanel() const { return isConfigurable() ? configPanel(*defaultConfig()) : Panel(); }

  // The value that runs once and is dropped.
  std::unique_ptr<QuirnOperation> make() const { return make_(); }

 private:
  OperationType() = default;

  std::shared_ptr<const OperationInfo> info_;
  std::shared_ptr<const AcceptedInputs> accepts_;
  bool isInteractive_ = false;
  bool isPerFile_ = false;
  std::function<bool(std::span<const InputFile>)> canRun_;
  std::function<std::unique_ptr<QuirnOperation>()> make_;
  std::function<std::unique_ptr<OperationConfig>()> makeConfig_;
  std::function<std::unique_ptr<OperationConfig>(const OperationConfig&)> copyConfig_;
  std::function<Panel(const OperationConfig&)> panel_;
};

namespace detail {

// What a class holds in a static member lives as long as the program, and needs no owner.
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
concept IsPerFile = std::is_base_of_v<PerFileOperation, Operation> ||
                    (HasConfig<Operation> && requires { &Operation::processFileConfigured; });

}  // namespace detail

template <class Operation>
OperationType OperationType::of() {
  static_assert(std::is_base_of_v<QuirnOperation, Operation>);
  OperationType type;
  type.info_ = detail::unowned(Operation::info());
  type.accepts_ = detail::unowned(Operation::accepts());
  type.isInteractive_ = std::is_base_of_v<AnyInteractiveOperation, Operation>;
  type.isPerFile_ = detail::IsPerFile<Operation>;
  type.make_ = [] { return std::make_unique<Operation>(); };
  if constexpr (detail::HasOwnTest<Operation>) {
    type.canRun_ = &Operation::canRun;
  } else {
    type.canRun_ = [](std::span<const InputFile> inputs) { return Operation::accepts().accepts(inputs); };
  }
  if constexpr (detail::HasConfig<Operation>) {
    using Config = typename Operation::Config;
    type.makeConfig_ = [] { return std::make_unique<Config>(); };
    type.copyConfig_ = [](const OperationConfig& config) {
      return std::make_unique<Config>(dynamic_cast<const Config&>(config));
    };
    type.panel_ = [](const OperationConfig& config) {
      return typeid(config) == typeid(Config) ? Config::panel() : Panel();
    };
  }
  return type;
}

}  // namespace quirn
