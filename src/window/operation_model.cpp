// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/operation_model.h"

#include <utility>

#include "core/refusal.h"
#include "shell/category_title.h"
#include "window/icon.h"
#include "window/list_row.h"
#include "window/qt_text.h"

namespace quirn::window {

void OperationModel::show(std::vector<Row> rows) {
  beginResetModel();
  rows_ = std::move(rows);
  endResetModel();
}

void OperationModel::showByFamily(const std::vector<const OperationType*>& types) {
  std::vector<Row> rows;
  // A family may begin several times in the order of suggestions; here it is kept together.
  std::vector<OperationCategory> families;
  for (const OperationType* type : types) {
    if (std::ranges::find(families, type->info().category) == families.end()) families.push_back(type->info().category);
  }
  for (const OperationCategory family : families) {
    rows.push_back({.family = family});
    for (const OperationType* type : types) {
      if (type->info().category == family) rows.push_back({type, family, ""});
    }
  }
  showsFamilyAtEnd_ = false;
  show(std::move(rows));
}

void OperationModel::showFound(const std::vector<const OperationType*>& types, std::span<const InputFile> inputs) {
  std::vector<Row> rows;
  for (const OperationType* type : types) rows.push_back({type, type->info().category, refusal(*type, inputs)});
  showsFamilyAtEnd_ = true;
  show(std::move(rows));
}

const OperationType* OperationModel::operation(const QModelIndex& index) const {
  return index.isValid() ? rows_.at(static_cast<std::size_t>(index.row())).type : nullptr;
}

int OperationModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant OperationModel::data(const QModelIndex& index, int role) const {
  const Row& row = rows_.at(static_cast<std::size_t>(index.row()));
  const QString family = toQt(categoryTitle(row.family));
  if (row.type == nullptr) {
    if (role == Qt::DisplayRole) return family;
    return role == headingRole ? QVariant(true) : QVariant();
  }
  const OperationInfo& info = row.type->info();
  const QString detail = toQt(row.refusal.empty() ? info.about : std::string_view(row.refusal));
  switch (role) {
    case Qt::DisplayRole: return toQt(info.displayName);
    case Qt::AccessibleTextRole: return toQt(info.displayName) + ". " + detail;
    case Qt::ToolTipRole:
    case detailRole: return detail;
    case endRole: return showsFamilyAtEnd_ ? family : QString();
    case fadedRole: return !row.refusal.empty();
    case tileRole:
      return QVariant::fromValue(Tile([&info](int size, const QPalette& palette, double pixelRatio) {
        return operationTile(info, size, palette, pixelRatio);
      }));
    default: return {};
  }
}

Qt::ItemFlags OperationModel::flags(const QModelIndex& index) const {
  return operation(index) == nullptr ? Qt::ItemFlags(Qt::NoItemFlags) : QAbstractListModel::flags(index);
}

}  // namespace quirn::window
