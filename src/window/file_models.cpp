// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/file_models.h"

#include <algorithm>
#include <ranges>

#include "core/byte_count.h"
#include "platform/file_status.h"
#include "shell/file_kind.h"
#include "window/icon.h"
#include "window/list_row.h"
#include "window/qt_text.h"

namespace quirn::window {
namespace {

QVariant tileOf(FileKind kind) {
  return QVariant::fromValue(Tile([kind](int size, const QPalette& palette, double pixelRatio) {
    return fileTile(kind, size, palette, pixelRatio);
  }));
}

QString detailOf(const InputFile& file) {
  const QString kind = toQt(fileKindText(file));
  return file.isDirectory ? kind : kind + " · " + toQt(byteCountText(file.size));
}

}  // namespace

void InputModel::sync() {
  const auto& inputs = session_.inputs();
  const auto isSame = [](const platform::Uuid& id, const InputFile& input) { return id == input.id; };
  const bool begins =
      inputs.size() >= shown_.size() && std::ranges::equal(shown_, inputs | std::views::take(shown_.size()), isSame);
  if (begins && inputs.size() == shown_.size()) return;
  if (begins) {
    beginInsertRows({}, static_cast<int>(shown_.size()), static_cast<int>(inputs.size()) - 1);
    for (const InputFile& input : inputs | std::views::drop(shown_.size())) shown_.push_back(input.id);
    endInsertRows();
  } else if (!syncRemoval()) {
    beginResetModel();
    shown_.clear();
    for (const InputFile& input : inputs) shown_.push_back(input.id);
    endResetModel();
  }
}

bool InputModel::syncRemoval() {
  const auto& inputs = session_.inputs();
  if (inputs.empty() || inputs.size() >= shown_.size()) return false;
  const auto removed = static_cast<std::ptrdiff_t>(shown_.size() - inputs.size());
  const auto isSame = [](const platform::Uuid& id, const InputFile& input) { return id == input.id; };
  const auto first = std::ranges::mismatch(shown_, inputs, isSame).in1;
  const auto behind = inputs.begin() + (first - shown_.begin());
  if (!std::ranges::equal(first + removed, shown_.end(), behind, inputs.end(), isSame)) return false;
  const int row = static_cast<int>(first - shown_.begin());
  beginRemoveRows({}, row, row + static_cast<int>(removed) - 1);
  shown_.erase(first, first + removed);
  endRemoveRows();
  return true;
}

const InputFile& InputModel::file(const QModelIndex& index) const {
  return session_.inputs().at(static_cast<std::size_t>(index.row()));
}

int InputModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

QVariant InputModel::data(const QModelIndex& index, int role) const {
  // Between a change of the session and sync() a row may be gone already.
  if (static_cast<std::size_t>(index.row()) >= session_.inputs().size()) return {};
  const InputFile& input = file(index);
  switch (role) {
    case Qt::DisplayRole: return shownName(input.fileName());
    case Qt::ToolTipRole: return shownName(input.url.native());
    case Qt::AccessibleTextRole: return shownName(input.fileName()) + ", " + detailOf(input);
    case detailRole: return detailOf(input);
    case tileRole: return tileOf(fileKind(input));
    default: return {};
  }
}

void OutputModel::sync() {
  const auto idOf = [](const OutputFile& output) { return output.id; };
  if (std::ranges::equal(shown_, session_.outputs(), {}, idOf, idOf)) return;
  beginResetModel();
  shown_ = session_.outputs();
  endResetModel();
}

const std::filesystem::path& OutputModel::path(const QModelIndex& index) const {
  return shown_.at(static_cast<std::size_t>(index.row())).url;
}

int OutputModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(shown_.size());
}

QVariant OutputModel::data(const QModelIndex& index, int role) const {
  const std::filesystem::path& file = path(index);
  switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole: return shownName(file.filename().native());
    case Qt::ToolTipRole: return shownName(file.native());
    case detailRole: {
      const platform::FileStatus status = platform::statusAt(file);
      const bool isFile = status.kind == platform::FileStatus::Kind::file;
      const QString folder = shownFolder(file.parent_path());
      return isFile ? toQt(byteCountText(status.size)) + " · " + folder : folder;
    }
    case tileRole: {
      const bool isFolder = platform::statusAt(file).kind == platform::FileStatus::Kind::folder;
      return tileOf(fileKind({.url = file, .contentType = ContentType::ofFile(file), .isDirectory = isFolder}));
    }
    default: return {};
  }
}

Qt::ItemFlags OutputModel::flags(const QModelIndex& index) const {
  return QAbstractListModel::flags(index) | Qt::ItemIsDragEnabled;
}

}  // namespace quirn::window
