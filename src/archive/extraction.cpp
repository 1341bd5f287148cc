// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/extraction.h"

#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <limits>
#include <ranges>
#include <system_error>

#include "core/budgets.h"
#include "core/operation_error.h"
#include "core/safe_path.h"
#include "platform/file_descriptor.h"
#include "platform/text.h"

namespace quirn {
namespace {

constexpr std::size_t longestPath = 4096;  // bytes; what the system takes

[[noreturn]] void throwUnsafe(std::string_view name) {
  throw OperationError::unsupportedInput(fmt::format("Unsafe path in archive: {}", platform::displayText(name)));
}

// As the box has it.
std::int64_t byteLimitFor(const InputFile& archive) {
  constexpr std::int64_t ratio = limitOf(Budget::bytesOutPerByteIn);
  return std::max(alwaysAllowedOutput,
                  std::min(archive.size, std::numeric_limits<std::int64_t>::max() / ratio) * ratio);
}

}  // namespace

bool isLitter(std::string_view name) {
  return name.starts_with("__MACOSX") || name.substr(name.rfind('/') + 1).starts_with("._") || name == ".DS_Store";
}

void requireSafe(std::string_view name) {
  if (name.starts_with('/')) throwUnsafe(name);
  bool hasParts = false;
  for (const auto part : std::views::split(name, '/')) {
    const std::string_view text(part.begin(), part.end());
    if (text == "..") throwUnsafe(name);
    hasParts = hasParts || !text.empty();
  }
  if (!hasParts) throwUnsafe(name);
}

Extraction::Extraction(const InputFile& archive, std::string stem, OperationContext& context)
    : archive_(archive), context_(context), folder_(context.stageFolder(archive, {std::move(stem), "extracted", ""})) {}

OutputFile Extraction::run(const std::function<void()>& entries) {
  try {
    entries();
    folder_->settle();
    if (extractedCount_ == 0) throw OperationError::unsupportedInput("Archive is empty.");
    return folder_->publish(OutputRole::primary);
  } catch (const EntryOutside& outside) {
    keep();
    throwUnsafe(outside.name());
  } catch (const std::exception&) {
    keep();
    throw;
  }
}

void Extraction::keep() {
  if (isUntouched_) return;
  try {
    folder_->settle();
  } catch (const EntryOutside&) {
    // The first fault is the one to tell of; what was made before this one stays all the same.
  } catch (const OperationError&) {
    // The same.
  }
  folder_->publish(OutputRole::primary);
}

void Extraction::begin(std::string_view name) {
  context_.checkCancellation();
  requireSafe(name);
  if (name.size() >= longestPath) throw OperationError::writeFailed(folder_->url(), "A name in it is too long.");
  if (++entryCount_ > limitOf(Budget::entries)) throw breachOf(Budget::entries, archive_.fileName());
}

void Extraction::countBytes(std::size_t bytes) {
  bytesOut_ += static_cast<std::int64_t>(bytes);
  if (bytesOut_ > byteLimitFor(archive_)) throw breachOf(Budget::bytesOutPerByteIn, archive_.fileName());
}

void Extraction::countFile(std::string_view name) {
  ++extractedCount_;
  isUntouched_ = false;
  context_.setStatus(fmt::format("Extracting {}…", name));
}

void Extraction::makeFolder(std::string_view name) {
  begin(name);
  folder_->makeFolder(name);
  isUntouched_ = false;
}

void Extraction::writeFile(std::string_view name, std::span<const std::byte> bytes, Date modified) {
  begin(name);
  countBytes(bytes.size());
  folder_->write(name, bytes, modified);
  countFile(name);
}

void Extraction::writeFile(std::string_view name, Date modified, const std::function<void(const Write&)>& fill) {
  begin(name);
  context_.setStatus(fmt::format("Extracting {}…", name));
  const int file = folder_->begin(name, modified);
  try {
    fill([&](std::span<const std::byte> bytes) {
      context_.checkCancellation();
      countBytes(bytes.size());
      platform::writeAll(file, bytes);
    });
  } catch (const std::system_error& error) {
    folder_->abandonFile();
    throw OperationError::writeFailed(folder_->url() / name, error.what());
  } catch (const std::exception&) {
    folder_->abandonFile();
    throw;
  }
  countFile(name);
}

void Extraction::makeLink(std::string_view name, std::string_view target) {
  begin(name);
  if (target.empty() || target.starts_with('/') || target.size() >= longestPath) return;
  const std::filesystem::path place(name);
  if (!pathInside(folder_->url(), place.parent_path() / target)) return;
  if (folder_->link(name, target)) countFile(name);
}

}  // namespace quirn
