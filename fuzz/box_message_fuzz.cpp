// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What a worker in a stranger's hands may send, taken by the program: one byte of length before each packet. No file is
// reached; whatever is refused must be refused by an exception that the program catches.

#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string_view>
#include <vector>

#include "core/box/grant.h"
#include "core/operation.h"

namespace quirn {
namespace {

class NullOutput final : public StagedOutput {
 public:
  int descriptor() const override { return -1; }
  const std::filesystem::path& url() const override { return url_; }
  OutputFile publish(OutputRole role) override { return {platform::Uuid::random(), url_, role}; }

 private:
  std::filesystem::path url_ = "/nowhere/output";
};

// Some names lead out of it, and some files can't be made.
class NullFolder final : public StagedFolder {
 public:
  const std::filesystem::path& url() const override { return url_; }
  void makeFolder(std::string_view name) override { take(name); }
  int begin(std::string_view name, Date) override {
    take(name);
    return -1;
  }
  void write(std::string_view name, std::span<const std::byte>, Date) override { take(name); }
  void abandonFile() override {}
  bool link(std::string_view name, std::string_view target) override {
    take(name);
    return !target.empty();
  }
  void settle() override {}
  OutputFile publish(OutputRole role) override { return {platform::Uuid::random(), url_, role}; }

 private:
  void take(std::string_view name) const {
    if (name.starts_with('/')) throw EntryOutside(std::string(name));
    if (name.empty()) throw OperationError::writeFailed(url_, "none");
  }

  std::filesystem::path url_ = "/nowhere/folder";
};

void check(const OutputNaming& naming) {
  for (const std::string& part : {naming.stem, naming.suffix, naming.extension})
    if (part.find('/') != std::string::npos) __builtin_trap();
}

class NullContext final : public OperationContext {
 public:
  NullContext() : OperationContext(1, std::nullopt) {}
  InputHandle open(const InputFile& input) override { throw OperationError::readFailed(input.url, "none"); }
  Neighbour openNeighbour(const InputFile&, const std::filesystem::path&) override { return {}; }
  std::vector<InputFile> enumerate(const InputFile& folder) override { return {folder}; }
  std::unique_ptr<StagedOutput> stage(const InputFile&, const OutputNaming& naming) override {
    check(naming);
    return std::make_unique<NullOutput>();
  }
  std::unique_ptr<StagedFolder> stageFolder(const InputFile&, const OutputNaming& naming) override {
    check(naming);
    return std::make_unique<NullFolder>();
  }
  void publishStaged() override {}
  OutputFile published(OutputFile output) override { return output; }
  void finish() override {}
};

class NullOperation final : public QuirnOperation {
 public:
  static constexpr bool readsNeighbours = true;
  static const OperationInfo& info() {
    static const OperationInfo info{.operationID = "null", .category = OperationCategory::utility, .aliases = {}};
    return info;
  }
  static const AcceptedInputs& accepts() {
    static const AcceptedInputs accepts;
    return accepts;
  }
  OperationResult run(std::span<const InputFile>, OperationContext&) const override { return {}; }
};

void takeAll(box::Grant& grant, std::string_view bytes) {
  while (!bytes.empty() && !grant.hasEnded()) {
    const std::size_t length = static_cast<unsigned char>(bytes.front());
    bytes.remove_prefix(1);
    grant.take(bytes.substr(0, length), [](const box::MessageWriter&, std::span<const int>) {});
    grant.checkOutputs();
    bytes.remove_prefix(std::min(length, bytes.size()));
  }
  if (grant.hasEnded()) grant.result();
}

}  // namespace
}  // namespace quirn

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace quirn;
  static const OperationType type = OperationType::of<NullOperation>();
  const InputFile input{.id = {},
                        .url = "/nowhere/in",
                        .contentType = ContentType("text/plain"),
                        .size = 9,
                        .isDirectory = true,
                        .bookmark = std::nullopt};
  const box::BoxLimits limits;
  NullContext context;
  box::Grant grant(type, std::span(&input, 1), context, limits);
  try {
    takeAll(grant, {reinterpret_cast<const char*>(data), size});
  } catch (const box::DamagedMessage&) {
    return 0;
  } catch (const box::OutsideGrant&) {
    return 0;
  } catch (const OperationError&) {
    return 0;
  } catch (const CancellationError&) {
    return 0;
  } catch (const std::runtime_error&) {  // a fault that the worker reports
    return 0;
  }
  return 0;
}
