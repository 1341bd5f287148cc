// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// The short messages at the top of the window. They lie over what is below, and screen readers speak
// each as it comes.

#pragma once

#include <QWidget>
#include <map>
#include <vector>

#include "core/banner_center.h"

namespace quirn::window {

class BannerStack final : public QWidget {
 public:
  // Keeps itself at the top of `parent`, in the middle.
  BannerStack(BannerCenter& banners, QWidget* parent);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void sync();
  void place();
  QWidget* row(const Banner& banner);

  BannerCenter& banners_;
  std::vector<std::pair<platform::Uuid, QWidget*>> rows_;  // from oldest to newest
  Subscription subscription_;
};

}  // namespace quirn::window
