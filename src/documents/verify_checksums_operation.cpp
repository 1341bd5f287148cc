// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "documents/verify_checksums_operation.h"

#include <fmt/format.h>

#include <string>
#include <vector>

#include "documents/checksum_list.h"
#include "documents/hash_algorithm.h"
#include "platform/text.h"

namespace quirn {
namespace {

constexpr std::int64_t largestList = 256 << 20;  // bytes; two million files and more

bool isChecksumList(const InputFile& input) {
  return upperCased(input.fileName()).ends_with("SUMS") ||
         hasExtension(input, {"sha256", "sha1", "sha512", "md5", "sum", "sums"});
}

class Verification {
 public:
  Verification(const InputFile& list, OperationContext& context)
      : list_(list), context_(context), text_(context.open(list).readAll(largestList)) {
    if (platform::isUtf8(text_)) return;
    isLatin1_ = true;
    text_ = platform::utf8FromLatin1(text_);
  }

  void run() {
    const std::vector<ChecksumEntry> entries = parseChecksumList(text_);
    if (entries.empty()) {
      throw OperationError::unsupportedInput(
          "No checksum lines found. Expected GNU “<hash>  <name>” or BSD “ALGO (name) = hash”.");
    }
    for (const ChecksumEntry& entry : entries) {
      context_.checkCancellation();
      context_.setStatus(fmt::format("Verifying {} ({}/{})…", entry.name, ++entryCount_, entries.size()));
      lines_ += verify(entry) + "\n";
    }
  }

  std::string summary() const {
    const std::string unsafe = skipped_ > 0 ? fmt::format(" {} skipped (unsafe path).", skipped_) : "";
    return fmt::format("{} OK, {} failed, {} missing of {} entries.{}", ok_, failed_, missing_, entryCount_, unsafe);
  }

  std::string report() const {
    constexpr int ruleLength = 40;
    return fmt::format("Checksum verification — {}\n{:─<{}}\n{}\n{}\n", platform::displayText(list_.fileName()), "",
                       ruleLength, lines_, summary());
  }

 private:
  std::string verify(const ChecksumEntry& entry) {
    try {
      Neighbour file = find(entry.name);
      if (file.place == Neighbour::Place::outside) return skipped(entry);
      if (file.place == Neighbour::Place::missing) return missing(entry);
      return matches(std::move(*file.file), entry) ? ok(entry) : failed(entry);
    } catch (const OperationError&) {
      // Whatever kept the file from being read is a finding about it, in the report's one wording.
      return failed(entry) + fmt::format("  (unrecognised hash length {})", entry.hash.size());
    }
  }

  // A list that is not UTF-8 names files by their bytes, which are not Unicode on this system; a
  // list brought from elsewhere may mean the same name in UTF-8.
  Neighbour find(const std::string& name) {
    if (isLatin1_) {
      Neighbour asWritten = context_.openNeighbour(list_, platform::latin1FromUtf8(name));
      if (asWritten.place != Neighbour::Place::missing) return asWritten;
    }
    return context_.openNeighbour(list_, name);
  }

  bool matches(InputHandle file, const ChecksumEntry& entry) const {
    const auto algorithm = algorithmOfDigestLength(entry.hash.size());
    return algorithm && digestOf(std::move(file), *algorithm, context_.stopToken()) == lowerCased(entry.hash);
  }

  // A line break in a name must not pass for a line of the report.
  static std::string line(std::string_view word, const ChecksumEntry& entry) {
    return fmt::format("{:<9}{}", word, platform::displayText(entry.name));
  }

  std::string ok(const ChecksumEntry& entry) {
    ++ok_;
    return line("OK", entry);
  }

  std::string failed(const ChecksumEntry& entry) {
    ++failed_;
    return line("FAILED", entry);
  }

  std::string missing(const ChecksumEntry& entry) {
    ++missing_;
    return line("MISSING", entry);
  }

  std::string skipped(const ChecksumEntry& entry) {
    ++skipped_;
    return line("SKIPPED", entry) + "  (path escapes the checksum file’s folder)";
  }

  const InputFile& list_;
  OperationContext& context_;
  std::string text_;
  bool isLatin1_ = false;
  std::string lines_;
  std::size_t entryCount_ = 0;
  std::size_t ok_ = 0;
  std::size_t failed_ = 0;
  std::size_t missing_ = 0;
  std::size_t skipped_ = 0;
};

}  // namespace

const OperationInfo& ChecksumVerifyOperation::info() {
  static const OperationInfo info{
      .operationID = "text.verify-checksums",
      .displayName = "Verify Checksums",
      .iconName = "checkmark.shield",
      .category = OperationCategory::text,
      .aliases = {"verify", "checksum", "sha256sum", "md5sum", "integrity", "validate"},
      .about = "Checks the files that a checksum list names and writes a report.",
  };
  return info;
}

const AcceptedInputs& ChecksumVerifyOperation::accepts() {
  static const AcceptedInputs accepts{
      .singular = "checksum list", .plural = "checksum lists", .matches = &isChecksumList};
  return accepts;
}

OutputFile ChecksumVerifyOperation::processFile(const InputFile& input, OperationContext& context) const {
  context.setStatus(fmt::format("Reading {}…", input.fileName()));
  Verification verification(input, context);
  verification.run();
  OutputFile output =
      writeTextOutput(context, input, "verify", "txt", verification.report(), "Couldn't write the report.");
  context.setStatus(verification.summary());
  return output;
}

}  // namespace quirn
