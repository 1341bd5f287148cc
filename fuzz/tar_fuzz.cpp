// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "archive/tar_walk.h"

namespace {

void require(bool condition) {
  if (!condition) std::abort();
}

}  // namespace

// Every entry's data begins inside the archive, and a walk in short steps comes to the same data.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  constexpr std::size_t shortStep = 300;
  const auto archive = std::as_bytes(std::span(data, size));
  const auto source = quirn::sourceOver(archive);
  quirn::TarWalk walk([&](std::size_t most) { return source(std::min(most, shortStep)); }, size);
  for (const quirn::TarEntry& entry : quirn::listTarEntries(archive)) {
    const auto place = static_cast<std::size_t>(entry.dataOffset);
    require(!entry.name.empty() && entry.dataOffset >= 0 && place <= size);
    const auto found = walk.next();
    require(found && found->name == entry.name && found->dataOffset == entry.dataOffset);
    require(walk.isWhole() == (entry.size <= size - place));
    if (walk.isWhole()) require(std::ranges::equal(walk.readAll(), archive.subspan(place, entry.size)));
  }
  require(!walk.next());
  return 0;
}
