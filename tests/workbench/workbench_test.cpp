// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/workbench.h"

#include <fstream>

#include "workbench/tool_cases.h"
#include "workbench/tool_options.h"

namespace quirn::testing {
namespace {

namespace fs = std::filesystem;

const TextTool& tool(std::string_view id) {
  return *textToolByID(id);
}

TEST(Workbench, recomputesAtOnce) {
  Workbench bench(tool("dev.base64"));
  bench.loadSample();
  EXPECT_EQ(bench.output(), "SGVsbG8sIFF1aXJuIQ==");
  bench.setOption("mode", "Decode");
  EXPECT_EQ(bench.output(), "");
  EXPECT_EQ(bench.errorMessage(), "Not valid Base64.");
  bench.setInput("YQpiCg==");
  EXPECT_EQ(bench.output(), "a\nb\n");
  EXPECT_EQ(bench.errorMessage(), std::nullopt);
  EXPECT_EQ(bench.outputLineCount(), "3 lines");
  bench.clearInput();
  EXPECT_EQ(bench.inputLineCount(), "1 lines");
}

TEST(Workbench, bringsNumbersIntoTheirRange) {
  Workbench bench(tool("dev.nanoid"));
  EXPECT_EQ(bench.outputLineCount(), "5 lines") << "a generator runs at once";
  bench.setOption("count", "999999999999999999");
  EXPECT_EQ(bench.outputLineCount(), "100 lines");
  bench.setOption("count", "-7");
  EXPECT_EQ(bench.outputLineCount(), "1 lines");
  bench.setOption("count", "many");
  EXPECT_EQ(bench.outputLineCount(), "5 lines");
  const std::string before = bench.output();
  bench.regenerate();
  EXPECT_NE(bench.output(), before);
}

TEST(Workbench, aFaultOfOursIsASentenceToo) {
  TextTool broken = tool("dev.slug");
  broken.transform = [](std::string_view, const TextToolOptions&) -> std::string { throw std::out_of_range("x"); };
  EXPECT_EQ(Workbench(broken).errorMessage(), "Couldn’t process the input.");
}

class WorkbenchFiles : public ::testing::Test {
 protected:
  void SetUp() override { fs::create_directories(folder); }
  void TearDown() override { fs::remove_all(folder); }
  static std::string content(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
  fs::path seed(std::string_view name, std::string_view bytes) const {
    std::ofstream(folder / name, std::ios::binary) << bytes;
    return folder / name;
  }

  fs::path folder = fs::path(::testing::TempDir()) / ("workbench-" + platform::Uuid::random().text());
};

TEST_F(WorkbenchFiles, savesBesideNothingThatIsThere) {
  Workbench bench(tool("dev.csv-escape"));
  bench.setInput("a,b");
  EXPECT_EQ(bench.save(folder).url, folder / "csv.csv");
  EXPECT_EQ(bench.save(folder).url, folder / "csv (1).csv");
  EXPECT_EQ(content(folder / "csv.csv"), "\"a,b\"");
}

TEST_F(WorkbenchFiles, namesTheFileAfterTheSeed) {
  const fs::path file = seed("my.data.txt", "it's");
  EXPECT_EQ(Workbench(tool("dev.sql-escape"), file).save("/nowhere").url, folder / "my.data (1).txt")
      << "the seed itself has the first name";
  EXPECT_EQ(Workbench(tool("dev.sql-escape"), file, folder / "out").save("/nowhere").url, folder / "out/my.data.txt");
  EXPECT_EQ(content(file), "it's");
  EXPECT_EQ(content(folder / "out/my.data.txt"), "it''s");
}

TEST_F(WorkbenchFiles, saysThatAFolderCantBeWritten) {
  try {
    Workbench(tool("dev.uuid")).save(seed("file", "") / "below");
    FAIL();
  } catch (const TextToolError& error) {
    EXPECT_EQ(error.message(), "Couldn’t save the file.");
  }
}

TEST_F(WorkbenchFiles, readsSeedsOfEveryEncoding) {
  constexpr std::string_view littleEndian("\xFF\xFE\xE9\0a\0\x3D\xD8\0\xDE\0\xD8!", 13);
  EXPECT_EQ(Workbench(tool("dev.slug"), seed("a", littleEndian)).input(), "éa😀\uFFFD\uFFFD");
  EXPECT_EQ(Workbench(tool("dev.slug"), seed("b", std::string_view("\xFE\xFF\0x", 4))).input(), "x");
  EXPECT_EQ(Workbench(tool("dev.slug"), seed("c", "a\xE9")).input(), "a\uFFFD");
  EXPECT_EQ(Workbench(tool("dev.hex-bytes"), seed("d", "a\xE9")).output(), "61e9") << "bytes as they are";
  EXPECT_EQ(Workbench(tool("dev.slug"), folder / "missing").errorMessage(), "Couldn't read missing.");
}

TEST(ToolOptions, takeWhatAScriptWouldWrite) {
  TextToolOptions options;
  const auto set = [&](std::string_view id, std::string_view key, std::string_view value) -> std::string {
    try {
      setOption(tool(id), options, key, value);
      return options.text(key, "");
    } catch (const SettingError& error) {
      return std::string("refused: ") + error.what();
    }
  };
  EXPECT_EQ(set("dev.punycode", "mode", "enc"), "Encode (→ xn--)");
  EXPECT_EQ(set("dev.hex-bytes", "mode", "hex→text"), "Hex→Text");
  EXPECT_EQ(set("dev.hash", "algo", "sha-5"), "SHA-512");
  EXPECT_EQ(set("dev.uuid", "count", "007"), "7");
  EXPECT_EQ(set("dev.hmac", "key", ""), "");
  EXPECT_EQ(set("dev.hash", "algo", "sha256"),
            "refused: “sha256” is not accepted for algo. Accepted: SHA-256, SHA-1, SHA-384, SHA-512, MD5. Did you mean "
            "“SHA-256”?");
  EXPECT_EQ(set("dev.base64", "mode", ""), "refused: “” is not accepted for mode. Accepted: Encode, Decode.");
  for (const std::string_view count : {"0", "501", "-1", "99999999999999999999", "5x", "", " 5", "NaN"}) {
    EXPECT_EQ(set("dev.uuid", "count", count),
              fmt::format("refused: “{}” is not accepted for count. Accepted: a whole number from 1 to 500.", count));
  }
  EXPECT_EQ(set("dev.uuid", "braces", "yes"), "refused: “yes” is not accepted for braces. Accepted: true, false.");
  EXPECT_EQ(set("dev.base64", "mod", "x"),
            "refused: There is no setting “mod”. Accepted: mode, url. Did you mean “mode”?");
}

}  // namespace
}  // namespace quirn::testing
