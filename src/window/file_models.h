// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The files of the window as rows: those that were gathered, and those that the last run made. They may
// be tens of thousands, so a row is put into words when it is looked at.

#pragma once

#include <QAbstractListModel>
#include <vector>

#include "shell/workspace_session.h"

namespace quirn::window {

class InputModel final : public QAbstractListModel {
 public:
  InputModel(const WorkspaceSession& session, QObject* parent) : QAbstractListModel(parent), session_(session) {}

  // Takes over what the session has now; what stays in place keeps its selection.
  void sync();

  const InputFile& file(const QModelIndex& index) const;
  int rowCount(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role) const override;

 private:
  // The removed rows are in one piece, and nothing else has changed.
  bool syncRemoval();

  const WorkspaceSession& session_;
  std::vector<platform::Uuid> shown_;
};

class OutputModel final : public QAbstractListModel {
 public:
  OutputModel(const WorkspaceSession& session, QObject* parent) : QAbstractListModel(parent), session_(session) {}

  void sync();

  const std::filesystem::path& path(const QModelIndex& index) const;
  int rowCount(const QModelIndex& parent) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  const WorkspaceSession& session_;
  std::vector<OutputFile> shown_;
};

}  // namespace quirn::window
