// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Expanding gzip streams of any length, in little memory.

#pragma once

#include <cstdint>

#include "archive/byte_sink.h"
#include "platform/mapped_file.h"

namespace quirn {

// What Quirn expands a stream to.
inline constexpr std::uint64_t gzipOutputLimit = 0x100000000;

// Hands on what a mapped stream expands to, piece by piece. False, when part of it may have been handed on, for what is
// no gzip, is damaged, or gives more than gzipOutputLimit. Reads the first member, and doesn't look at its trailer.
// Throws what the sink throws.
bool gunzip(const platform::MappedFile& file, const ByteSink& sink);

}  // namespace quirn
