// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "archive/zip_inspect_operation.h"

#include <fmt/format.h>

#include <algorithm>
#include <iterator>
#include <limits>

#include "archive/zip_extract_operation.h"
#include "archive/zip_reader.h"
#include "core/byte_count.h"
#include "platform/text.h"

namespace quirn {
namespace {

constexpr std::uint64_t mostBytes = std::numeric_limits<std::int64_t>::max();

// Sizes in an archive may be lies whose sum is no number any more.
std::uint64_t saturatedSum(std::uint64_t one, std::uint64_t other) {
  return std::min(mostBytes, std::min(one, mostBytes) + std::min(other, mostBytes));
}

std::string sizeText(std::uint64_t bytes) {
  return byteCountText(static_cast<std::int64_t>(std::min(bytes, mostBytes)));
}

std::string column(std::string text) {
  constexpr std::size_t width = 12;
  text.resize(width, ' ');
  return text;
}

class Report {
 public:
  explicit Report(const InputFile& archive) {
    line("Contents of {}", platform::displayText(archive.fileName()));
    rule();
    line("Size        Compressed  Name");
  }

  void add(const ZipFileEntry& entry) {
    ++entryCount_;
    if (entry.isDirectory) return;
    total_ = saturatedSum(total_, entry.uncompressedSize);
    compressed_ = saturatedSum(compressed_, entry.compressedSize);
    if (entry.isEncrypted) ++encryptedCount_;
    text_ += column(sizeText(entry.uncompressedSize));
    text_ += column(sizeText(entry.compressedSize));
    if (entry.isEncrypted) text_ += "🔒 ";
    text_ += platform::displayText(entry.name);
    text_ += '\n';
  }

  std::string finished() && {
    rule();
    const std::string encrypted =
        encryptedCount_ > 0 ? fmt::format(" · 🔒 {} encrypted (AES)", encryptedCount_) : std::string();
    text_ += fmt::format("{} entries · {} → {} ({}% smaller){}", entryCount_, sizeText(total_), sizeText(compressed_),
                         percentSmaller(), encrypted);
    return std::move(text_);
  }

 private:
  template <class... Arguments>
  void line(fmt::format_string<Arguments...> format, Arguments&&... arguments) {
    fmt::format_to(std::back_inserter(text_), format, std::forward<Arguments>(arguments)...);
    text_ += '\n';
  }
  void rule() { line("{:─<60}", ""); }

  std::int64_t percentSmaller() const {
    if (total_ == 0) return 0;
    return static_cast<std::int64_t>(100 - static_cast<double>(compressed_) / static_cast<double>(total_) * 100);
  }

  std::string text_;
  std::uint64_t total_ = 0;
  std::uint64_t compressed_ = 0;
  std::size_t entryCount_ = 0;
  std::size_t encryptedCount_ = 0;
};

}  // namespace

const OperationInfo& ZipInspectOperation::info() {
  static const OperationInfo info{
      .operationID = "archive.zip-inspect",
      .displayName = "Inspect ZIP",
      .iconName = "list.bullet.rectangle",
      .category = OperationCategory::archive,
      .aliases = {"zip contents", "list zip", "inspect archive", "peek zip"},
      .about = "Lists what is in each ZIP archive, with sizes, in a text file.",
  };
  return info;
}

const AcceptedInputs& ZipInspectOperation::accepts() {
  return ZipExtractOperation::accepts();
}

OutputFile ZipInspectOperation::processFile(const InputFile& input, OperationContext& context) const {
  context.checkCancellation();
  const InputHandle file = context.open(input);
  const platform::MappedFile mapped = file.map();
  Report report(input);
  for (const ZipFileEntry& entry : listZipEntries(mapped.bytes())) report.add(entry);
  const auto output = context.stage(input, "Contents", "txt");
  output->write(std::move(report).finished());
  return output->publish(OutputRole::primary);
}

}  // namespace quirn
