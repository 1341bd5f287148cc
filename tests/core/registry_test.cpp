// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/registry.h"

#include "support/runs.h"

namespace quirn::tests {
namespace {

// What runs on anything, even on nothing, and does nothing.
template <OperationCategory Category, char Letter>
class Anything final : public PerFileOperation {
 public:
  static const OperationInfo& info() {
    static const std::string id = std::string("test.") + Letter;
    static const OperationInfo info{id, id, "icon", Category, {}, "Nothing."};
    return info;
  }
  static const AcceptedInputs& accepts() {
    static const AcceptedInputs accepts{.atLeast = 0, .folders = AcceptedInputs::Folders::allowed};
    return accepts;
  }
  OutputFile processFile(const InputFile&, OperationContext&) const override { return {}; }
};
template <OperationCategory Category, char Letter>
OperationType anything() {
  return OperationType::of<Anything<Category, Letter>>();
}

std::string suggested(const OperationRegistry& registry, const std::vector<std::string>& types) {
  std::vector<InputFile> inputs;
  for (const std::string& type : types) {
    inputs.push_back(
        {platform::Uuid::random(), "/nowhere/a", ContentType(type), 0, type == "inode/directory", std::nullopt});
  }
  std::string letters;
  for (const OperationType* type : registry.suggestions(inputs)) letters += type->info().operationID.back();
  return letters;
}

TEST(Registry, PutsTheDominantCategoryFirstAndKeepsTheOrderOtherwise) {
  using enum OperationCategory;
  OperationRegistry registry;
  registry.registerOperation(anything<text, 'a'>());
  registry.registerOperation(anything<pdf, 'b'>());
  registry.registerOperation(anything<image, 'c'>());
  registry.registerOperation(anything<pdf, 'd'>());
  registry.registerOperation(anything<archive, 'e'>());
  registry.registerOperation(anything<video, 'f'>());
  registry.registerOperation(anything<audio, 'g'>());
  registry.registerOperation(OperationType::of<Anything<text, 'a'>>());  // again
  const std::vector<std::pair<std::vector<std::string>, std::string>> rows{
      {{}, "abcdefg"},
      {{"text/plain", "text/csv"}, "abcdefg"},
      {{"application/pdf", "application/pdf", "text/plain"}, "bdacefg"},
      {{"image/png", "image/webp", "application/pdf"}, "cabdefg"},
      {{"application/gzip"}, "eabcdfg"},
      {{"application/zip", "application/x-7z-compressed", "audio/flac"}, "eabcdfg"},
      {{"video/mp4"}, "fabcdeg"},
      {{"audio/mpeg", "text/plain", "text/plain"}, "gabcdef"},
      {{"inode/directory"}, "abcdefg"},
  };
  for (const auto& [types, letters] : rows)
    EXPECT_EQ(suggested(registry, types), letters) << fmt::format("{}", fmt::join(types, ", "));
}

class Second final : public PerFileOperation {
 public:
  static const OperationInfo& info() {
    static const OperationInfo info{"test.a", "Second", "icon", OperationCategory::ai, {}, "It."};
    return info;
  }
  static const AcceptedInputs& accepts() {
    static const AcceptedInputs accepts;
    return accepts;
  }
  OutputFile processFile(const InputFile&, OperationContext&) const override { return {}; }
};

TEST(Registry, KeepsTheFirstOfTwoWithOneIdentifier) {
  OperationRegistry registry;
  registry.registerOperation(anything<OperationCategory::text, 'a'>());
  registry.registerOperation(anything<OperationCategory::text, 'b'>());
  registry.registerOperation(OperationType::of<Second>());
  ASSERT_EQ(registry.operations().size(), 2);
  EXPECT_EQ(registry.byID("test.a")->info().displayName, "test.a");
  EXPECT_EQ(registry.operations().front().info().displayName, "test.a");
  EXPECT_EQ(registry.byID("test.c"), nullptr);
}

TEST(Registry, LeavesOutWhatCanNotRunOnAFolder) {
  for (const OperationType* type : catalog().suggestions({}))
    EXPECT_EQ(type->accepts().atLeast, 0) << type->info().operationID;
  const std::vector<InputFile> folder{inputAt("/tmp")};
  for (const OperationType* type : catalog().suggestions(folder))
    EXPECT_NE(type->accepts().folders, AcceptedInputs::Folders::refused);
}

TEST(OperationError, SaysWhatAPersonCanRead) {
  const std::vector<std::pair<OperationError, std::string>> rows{
      {OperationError::unsupportedInput("It is empty."), "Quirn can't run this on these files. It is empty."},
      {OperationError::readFailed("/a/b.txt", "EIO"), "Couldn't read b.txt."},
      {OperationError::writeFailed("/a/b.txt", "EIO"), "Couldn't write b.txt."},
      {OperationError::engineFailed("packing", "EIO"), "Something went wrong during packing."},
      {OperationError::sandboxAccessDenied("/a/b.txt"), "Quirn lost access to b.txt. Drag it in again."},
      {OperationError::cancelled(), "Operation cancelled."},
  };
  for (const auto& [error, message] : rows) EXPECT_EQ(error.userMessage(), message);
  EXPECT_EQ(rows[1].first.underlying(), "EIO");
}

}  // namespace
}  // namespace quirn::tests
