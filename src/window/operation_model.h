// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Operations as rows, under headings of their families or in the order of a search.

#pragma once

#include <QAbstractListModel>
#include <span>
#include <string>
#include <vector>

#include "core/operation_type.h"

namespace quirn::window {

class OperationModel final : public QAbstractListModel {
 public:
  explicit OperationModel(QObject* parent) : QAbstractListModel(parent) {}

  // In this order, with a heading wherever another family begins.
  void showByFamily(const std::vector<const OperationType*>& types);
  // In this order, each with its family at the end, and those that can't run on the inputs with the
  // reason.
  void showFound(const std::vector<const OperationType*>& types, std::span<const InputFile> inputs);

  // Null for a heading.
  const OperationType* operation(const QModelIndex& index) const;
  int rowCount(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  struct Row {
    const OperationType* type = nullptr;
    OperationCategory family;
    std::string refusal;  // empty where it can run
  };
  void show(std::vector<Row> rows);

  std::vector<Row> rows_;
  bool showsFamilyAtEnd_ = false;
};

}  // namespace quirn::window
