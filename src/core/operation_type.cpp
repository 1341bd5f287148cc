// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/operation_type.h"

#include <utility>

namespace quirn {
namespace {

class DescribedInteractiveOperation final : public AnyInteractiveOperation {
 public:
  explicit DescribedInteractiveOperation(std::shared_ptr<const OperationInfo> info) : info_(std::move(info)) {}

 private:
  std::string_view displayName() const override { return info_->displayName; }

  std::shared_ptr<const OperationInfo> info_;
};

}  // namespace

OperationType OperationType::interactive(std::shared_ptr<const OperationInfo> info,
                                         std::shared_ptr<const AcceptedInputs> accepts) {
  OperationType type;
  type.isInteractive_ = true;
  type.canRun_ = [accepts](std::span<const InputFile> inputs) { return accepts->accepts(inputs); };
  type.make_ = [info] { return std::make_unique<DescribedInteractiveOperation>(info); };
  type.info_ = std::move(info);
  type.accepts_ = std::move(accepts);
  return type;
}

}  // namespace quirn
