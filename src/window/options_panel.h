// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The settings of the operation that is about to run, built from the panel that its record declares, and
// what runs it.

#pragma once

#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>
#include <QWidget>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "shell/workspace_session.h"

namespace quirn::window {

class OptionsPanel final : public QWidget {
 public:
  OptionsPanel(WorkspaceSession& session, BannerCenter& banners, QWidget* parent);

  // Shows the operation that the session has open, if it isn't shown yet. True if another one is shown
  // now.
  bool sync();

 private:
  void makeFrame();
  void fill(const ConfiguringOperation& open);
  void addControl(const Control& control, const ConfiguringOperation& open);
  void addNote(const QString& text, std::function<bool(const OperationConfig&)> isShown);
  void set(const std::string& key, const std::string& text);
  void refuse(const std::string& key, const std::string& sentence);
  void update();
  void copyCommand() const;

  WorkspaceSession& session_;
  BannerCenter& banners_;
  platform::Uuid shown_;
  Panel panel_;
  // What is shown and hidden as one.
  struct Row {
    std::string key;  // of a control
    std::function<bool(const OperationConfig&)> isShown;
    QWidget* widget = nullptr;
    QLabel* refusal = nullptr;  // the sentence on a text that is not accepted; of a control
  };
  std::vector<Row> rows_;

  QLabel* tile_ = nullptr;
  QLabel* title_ = nullptr;
  QLabel* about_ = nullptr;
  QLabel* inputs_ = nullptr;
  QScrollArea* scroll_ = nullptr;
  QWidget* form_ = nullptr;
  QVBoxLayout* formLayout_ = nullptr;
  QPushButton* run_ = nullptr;
};

}  // namespace quirn::window
