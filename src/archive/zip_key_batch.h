// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Keys for entries that are worked on side by side. Keys are derived in batches, by whoever needs one of a batch first.

#pragma once

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "archive/zip_aes.h"

namespace quirn {

class ZipKeyBatch;

// A key that is derived when it is first wanted. From any thread.
class ZipKey {
 public:
  ZipKey(std::shared_ptr<ZipKeyBatch> batch, std::size_t number) : batch_(std::move(batch)), number_(number) {}

  const ZipSalt& salt() const;
  const ZipAesKeys& keys() const;

 private:
  std::shared_ptr<ZipKeyBatch> batch_;
  std::size_t number_;
};

// Gives out keys of one password. A batch is closed once one of its keys may be wanted: the salts must all be known.
class ZipKeySource {
 public:
  explicit ZipKeySource(std::string password) : password_(std::move(password)) {}

  // One key for each salt, in order.
  std::vector<ZipKey> keysFor(const std::vector<ZipSalt>& salts) const;
  // A key with a salt of its own.
  ZipKey newKey();

 private:
  std::string password_;
  std::vector<ZipKey> fresh_;
};

class ZipKeyBatch {
 public:
  ZipKeyBatch(std::string password, std::vector<ZipSalt> salts)
      : password_(std::move(password)), salts_(std::move(salts)) {}

  const ZipSalt& saltAt(std::size_t number) const { return salts_[number]; }
  const ZipAesKeys& keysAt(std::size_t number) {
    std::call_once(isDerived_, [this] { keys_ = zipAesKeys(password_, salts_); });
    return keys_[number];
  }

 private:
  std::string password_;
  std::vector<ZipSalt> salts_;
  std::once_flag isDerived_;
  std::vector<ZipAesKeys> keys_;
};

}  // namespace quirn
