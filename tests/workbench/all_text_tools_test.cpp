// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What holds for every text tool, whatever it does.

#include <random>
#include <set>

#include "catalog/catalog.h"
#include "core/local_context.h"
#include "platform/text.h"
#include "workbench/text_tool_operation.h"
#include "workbench/tool_cases.h"
#include "workbench/tool_input.h"
#include "workbench/tool_options.h"
#include "workbench/tool_run.h"

namespace quirn::testing {
namespace {

TEST(AllTextTools, describeThemselves) {
  std::set<std::string> ids;
  for (const TextTool* tool : allTextTools()) {
    SCOPED_TRACE(tool->id);
    EXPECT_TRUE(ids.insert(tool->id).second) << "two tools of one identifier";
    EXPECT_FALSE(tool->blurb.empty() || tool->shortName.empty() || tool->icon.empty() || tool->aliases.empty());
    std::set<std::string> keys;
    for (const TextToolControl& control : tool->controls) EXPECT_TRUE(keys.insert(keyOf(control)).second);
    TextToolOptions options;
    for (const auto& [key, value] : defaultOptions(*tool).values)
      EXPECT_NO_THROW(setOption(*tool, options, key, value));
  }
}

TEST(AllTextTools, areInTheCatalogInTheirOrder) {
  OperationRegistry registry;
  registerAllOperations(registry);
  std::vector<std::string_view> registered, wanted;
  for (const TextTool* tool : allTextTools()) wanted.push_back(tool->id);
  for (const OperationType& type : registry.operations())
    if (textToolByID(type.info().operationID) != nullptr) registered.push_back(type.info().operationID);
  EXPECT_EQ(registered, wanted);
}

std::string generatedText(std::mt19937& random, std::size_t length) {
  constexpr std::u32string_view alphabet =
      U"aZ09 \n\t\r\"'\\&<>=%,;#-_.+/\u0001\u007F\u00E9\u00DF\u0301\u2028\u2615\uFFFD\U0001D7D9";
  std::string text;
  for (std::size_t i = 0; i < length; ++i) {
    const char32_t scalar = alphabet[random() % alphabet.size()];
    platform::appendUtf8(text, scalar);
    if (random() % 50 == 0) text += '\0';
  }
  return text;
}

// Every tool, in each of its modes, with input that nobody would write.
TEST(AllTextTools, endWithTextOrASentence) {
  std::mt19937 random(7);  // NOLINT(bugprone-random-generator-seed): the same inputs every time
  std::vector<std::string> inputs{"",
                                  "\n",
                                  std::string(3, '\0'),
                                  "\xFF\xFE\xC3(\xED\xA0\x80",
                                  "\xEF\xBB\xBFx",
                                  std::string(1 << 18, '\\'),
                                  std::string(1 << 18, '&'),
                                  std::string(1 << 18, 'U'),
                                  generatedText(random, 1 << 16)};
  for (int i = 0; i < 50; ++i) inputs.push_back(generatedText(random, 40));
  for (const TextTool* tool : allTextTools()) {
    SCOPED_TRACE(tool->id);
    const auto* mode = tool->controls.empty() ? nullptr : std::get_if<ChoiceControl>(tool->controls.data());
    for (const std::string& option : mode == nullptr ? std::vector<std::string>{""} : mode->options) {
      TextToolOptions options = defaultOptions(*tool);
      if (mode != nullptr) options.values[mode->key] = option;
      for (const std::string& input : inputs) {
        const ToolRun run = runTool(*tool, toolInput(*tool, input), options);
        EXPECT_NE(run.errorMessage.value_or(""), "Couldn’t process the input.") << option;
        EXPECT_TRUE(platform::isUtf8(run.output)) << option;
      }
    }
  }
}

TEST(AllTextTools, giveBackWhatTheyTook) {
  std::mt19937 random(11);  // NOLINT(bugprone-random-generator-seed): the same inputs every time
  const std::vector<std::tuple<std::string_view, std::string_view, std::pair<std::string_view, std::string_view>>>
      pairs{{"dev.base64", "Decode", {"url", "true"}},
            {"dev.base64", "Decode", {"url", "false"}},
            {"dev.base32", "Decode", {}},
            {"dev.hex-bytes", "Hex→Text", {"sep", "space"}},
            {"dev.quoted-printable", "Decode", {}},
            {"dev.url-encode", "Decode", {}},
            {"dev.url-encode", "Decode", {"component", "true"}},
            {"dev.html-escape", "Unescape", {}},
            {"dev.xml-escape", "Unescape", {}}};
  for (int i = 0; i < 200; ++i) {
    const std::string text = generatedText(random, static_cast<std::size_t>(i));
    for (const auto& [id, back, setting] : pairs)
      EXPECT_EQ(outputOf(id, outputOf(id, text, {setting}), {setting, {"mode", back}}), text) << id;
  }
}

TEST(TextToolOperation, isInteractiveAndOpensEmpty) {
  const OperationType type = textToolOperation(*textToolByID("dev.base64"));
  EXPECT_EQ(type.info().displayName, "Base64");
  EXPECT_TRUE(type.isInteractive());
  EXPECT_TRUE(type.canRun({}));
  const std::vector<InputFile> file{{.url = "/a.txt", .contentType = ContentType("text/plain")}};
  EXPECT_FALSE(type.canRun(file));
  LocalContext context(0, std::nullopt);
  try {
    type.make()->run({}, context);
    FAIL();
  } catch (const OperationError& error) {
    EXPECT_THAT(error.userMessage(), ::testing::HasSubstr("Base64 is interactive."));
  }
}

TEST(TextToolOperation, opensOneFileOfItsKind) {
  TextTool tool = *textToolByID("dev.base64");
  tool.fileMatch = {"json"};
  const OperationType type = textToolOperation(tool);
  const InputFile json{.url = "/a.JSON", .contentType = ContentType("application/json")};
  EXPECT_TRUE(type.canRun(std::vector{json}));
  EXPECT_FALSE(type.canRun(std::vector{json, json}));
  EXPECT_EQ(type.accepts().description(), "One JSON file or none");
}

}  // namespace
}  // namespace quirn::testing
