# SPDX-FileCopyrightText: Quirn contributors
# SPDX-License-Identifier: GPL-3.0-or-later

# One precompiled header for all layers: what nearly every file includes anyway. A source still
# includes what it uses, so it compiles without it.

find_package(fmt REQUIRED)
add_library(quirn_precompiled OBJECT "${PROJECT_SOURCE_DIR}/cmake/precompiled.cpp")
target_link_libraries(quirn_precompiled PRIVATE fmt::fmt)
target_precompile_headers(
  quirn_precompiled PRIVATE
  <algorithm> <array> <chrono> <cstddef> <cstdint> <filesystem> <functional> <map> <memory>
  <optional> <ranges> <span> <stop_token> <string> <string_view> <unordered_map> <utility> <variant>
  <vector> <fmt/format.h>)
