// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/banner_center.h"

#include <utility>

namespace quirn {

void BannerCenter::post(BannerStyle style, std::string message, std::chrono::milliseconds lifetime) {
  constexpr std::size_t mostBanners = 3;
  const Banner banner{platform::Uuid::random(), style, std::move(message), std::chrono::system_clock::now()};
  banners_.push_back(banner);
  if (banners_.size() > mostBanners) banners_.erase(banners_.begin());
  queue_.postAfter(lifetime, [weak = std::weak_ptr(self_), id = banner.id] {
    if (const auto center = weak.lock()) (*center)->dismiss(id);
  });
  changed_.emit();
  if (announce_) announce_(banner.message);
}

void BannerCenter::dismiss(const platform::Uuid& id) {
  const std::size_t removed = std::erase_if(banners_, [&](const Banner& banner) { return banner.id == id; });
  if (removed > 0) changed_.emit();
}

}  // namespace quirn
