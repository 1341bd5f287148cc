// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/zip_key_batch.h"

#include <algorithm>

namespace quirn {

const ZipSalt& ZipKey::salt() const {
  return batch_->saltAt(number_);
}

const ZipAesKeys& ZipKey::keys() const {
  return batch_->keysAt(number_);
}

std::vector<ZipKey> ZipKeySource::keysFor(const std::vector<ZipSalt>& salts) const {
  std::vector<ZipKey> keys;
  for (std::size_t at = 0; at < salts.size(); at += zipAesBatch) {
    const auto first = salts.begin() + static_cast<std::ptrdiff_t>(at);
    const std::size_t count = std::min(zipAesBatch, salts.size() - at);
    const auto batch =
        std::make_shared<ZipKeyBatch>(password_, std::vector(first, first + static_cast<std::ptrdiff_t>(count)));
    for (std::size_t number = 0; number < count; ++number) keys.emplace_back(batch, number);
  }
  return keys;
}

ZipKey ZipKeySource::newKey() {
  if (fresh_.empty()) {
    std::vector<ZipSalt> salts(zipAesBatch);
    std::ranges::generate(salts, &randomZipSalt);
    fresh_ = keysFor(salts);
  }
  ZipKey key = std::move(fresh_.back());
  fresh_.pop_back();
  return key;
}

}  // namespace quirn
