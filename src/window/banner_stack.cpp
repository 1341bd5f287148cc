// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "window/banner_stack.h"

#include <QAccessible>
#include <QAccessibleWidget>
#include <QEvent>
#include <QGraphicsDropShadowEffect>
#include <QVBoxLayout>
#include <algorithm>

#include "platform/text.h"
#include "window/child.h"
#include "window/colors.h"
#include "window/icon.h"
#include "window/parts.h"
#include "window/qt_text.h"

namespace quirn::window {
namespace {

constexpr const char* bannerProperty = "banner";

class AlertInterface final : public QAccessibleWidget {
 public:
  explicit AlertInterface(QWidget* widget)
      : QAccessibleWidget(widget, QAccessible::AlertMessage, widget->accessibleName()) {}
};

// Gives banners the role that screen readers speak at once.
QAccessibleInterface* bannerInterface(const QString&, QObject* object) {
  auto* const widget = qobject_cast<QWidget*>(object);
  if (widget == nullptr || !widget->property(bannerProperty).toBool()) return nullptr;
  return std::make_unique<AlertInterface>(widget).release();
}

std::string_view drawingFor(BannerStyle style) {
  switch (style) {
    case BannerStyle::success: return "check";
    case BannerStyle::warning:
    case BannerStyle::error: return "warning";
    case BannerStyle::info: break;
  }
  return "info";
}

void announce(QWidget* banner) {
  QAccessibleEvent event(banner, QAccessible::Alert);
  QAccessible::updateAccessibility(&event);
}

}  // namespace

BannerStack::BannerStack(BannerCenter& banners, QWidget* parent) : QWidget(parent), banners_(banners) {
  QAccessible::installFactory(&bannerInterface);
  setObjectName("banners");
  layoutOf<QVBoxLayout>(this, 8, {16, 8, 16, 16});
  parent->installEventFilter(this);
  subscription_ = banners.changed().subscribe([this] { sync(); });
  sync();
}

bool BannerStack::eventFilter(QObject* watched, QEvent* event) {
  if (watched == parent() && event->type() == QEvent::Resize) place();
  return QWidget::eventFilter(watched, event);
}

void BannerStack::sync() {
  const auto isGone = [&](const auto& entry) {
    return std::ranges::find(banners_.banners(), entry.first, &Banner::id) == banners_.banners().end();
  };
  for (const auto& entry : rows_) {
    // Its own close button may be what is being clicked.
    if (isGone(entry)) entry.second->deleteLater(), entry.second->hide();
  }
  std::erase_if(rows_, isGone);
  for (const Banner& banner : banners_.banners()) {
    if (std::ranges::find(rows_, banner.id, [](const auto& entry) { return entry.first; }) != rows_.end()) continue;
    QWidget* const made = row(banner);
    layout()->addWidget(made);
    rows_.emplace_back(banner.id, made);
    made->show();
    announce(made);
  }
  place();
}

void BannerStack::place() {
  setVisible(!rows_.empty());
  const int width = std::min(parentWidget()->width(), 640);
  const int height = layout()->hasHeightForWidth() ? layout()->heightForWidth(width) : sizeHint().height();
  setGeometry((parentWidget()->width() - width) / 2, 0, width, height);
  raise();
}

QWidget* BannerStack::row(const Banner& banner) {
  auto* const card = child<Card>(this);
  card->setProperty(bannerProperty, true);
  card->setAccessibleName(toQt(banner.message));
  auto* const shadow = child<QGraphicsDropShadowEffect>(static_cast<QObject*>(card));
  shadow->setBlurRadius(24);
  shadow->setOffset(0, 4);
  shadow->setColor(QColor(0, 0, 0, 55));
  card->setGraphicsEffect(shadow);
  auto* const layout = layoutOf<QHBoxLayout>(card, 12, {16, 9, 8, 9});
  auto* const picture = child<QLabel>(card);
  picture->setPixmap(iconPixmap(drawingFor(banner.style), 20, Colors(palette()).of(banner.style), devicePixelRatioF()));
  layout->addWidget(picture);
  QLabel* const text = label(card, toQt(platform::displayText(banner.message)));
  text->setWordWrap(true);
  text->setTextInteractionFlags(Qt::TextSelectableByMouse);
  layout->addWidget(text, 1);
  QPushButton* const close = quietButton(card, "close", "Dismiss");
  connect(close, &QPushButton::clicked, this, [this, id = banner.id] { banners_.dismiss(id); });
  layout->addWidget(close, 0, Qt::AlignTop);
  return card;
}

}  // namespace quirn::window
