// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/instant.h"

#include <chrono>

namespace quirn {

Instant currentInstant() {
  using namespace std::chrono;
  const auto now = system_clock::now().time_since_epoch();
  const auto whole = floor<seconds>(now);
  return {whole.count(), static_cast<int>(duration_cast<nanoseconds>(now - whole).count())};
}

}  // namespace quirn
