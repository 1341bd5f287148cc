// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// gzip (RFC 1952): one member, without a name.

#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <optional>
#include <span>

#include "platform/bytes.h"

namespace quirn {

platform::Bytes gzipCompress(std::span<const std::byte> bytes, std::chrono::sys_seconds modified);

// Nothing for what is no gzip, is damaged, or gives more than `outputLimit` bytes. Reads the first member; its
// checksum and length are not looked at, nor is what follows it.
std::optional<platform::Bytes> gzipDecompress(std::span<const std::byte> bytes, std::uint64_t outputLimit);

// The parts of a stream, for those who compress or expand piece by piece.
platform::Bytes gzipHeader(std::chrono::sys_seconds modified);
platform::Bytes gzipTrailer(std::uint32_t crc, std::uint64_t size);
// Where the deflate data lies; nothing for what is no gzip.
std::optional<std::span<const std::byte>> gzipPayload(std::span<const std::byte> bytes);

}  // namespace quirn
