// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/panel.h"

#include "support/runs.h"

namespace quirn::tests {
namespace {

struct Settings : OperationConfig {
  enum class Mode { everyPage, ranges };
  Mode mode = Mode::everyPage;
  int pages = 1;
  double ratio = 0.5;
  bool isExact = false;
  std::string title = "untitled";

  static Panel panel() {
    return {choice<&Settings::mode>("Mode", {{Mode::everyPage, "Every page"}, {Mode::ranges, "Ranges"}}),
            Note{"A note."},
            stepper<&Settings::pages>("Pages", {.legal = {1, 500}, .suggested = Range{1, 50}}),
            slider<&Settings::ratio>("Ratio", {.legal = {0.25, 4}}),
            toggle<&Settings::isExact>("Exact").shownWhen<Settings>(
                [](const Settings& settings) { return settings.mode == Mode::ranges; }),
            field<&Settings::title>("Title", "a title")};
  }
};

std::string refusal(std::string_view key, std::string_view value) {
  Settings settings;
  try {
    Settings::panel().set(settings, key, value);
  } catch (const SettingError& error) {
    return error.what();
  }
  return "accepted";
}

TEST(Panel, RefusesWithWhatItAccepts) {
  struct Row {
    std::string key;
    std::string value;
    std::string sentence;
  };
  const std::vector<Row> rows{
      {"page", "1",
       "There is no setting “page”. Accepted: mode, pages, ratio, isExact, title. "
       "Did you mean “pages”?"},
      {"", "", "There is no setting “”. Accepted: mode, pages, ratio, isExact, title."},
      {"mode", "range", "“range” is not accepted for mode. Accepted: everyPage, ranges. Did you mean “ranges”?"},
      {"mode", "Every page",
       "“Every page” is not accepted for mode. Accepted: everyPage, ranges. "
       "Did you mean “everyPage”?"},
      {"pages", "501", "“501” is not accepted for pages. Accepted: a whole number from 1 to 500."},
      {"pages", "1.5", "“1.5” is not accepted for pages. Accepted: a whole number from 1 to 500."},
      {"pages", "99999999999999999999",
       "“99999999999999999999” is not accepted for pages. Accepted: a whole number from 1 to 500."},
      {"pages", "4294967297", "“4294967297” is not accepted for pages. Accepted: a whole number from 1 to 500."},
      {"ratio", "nan", "“nan” is not accepted for ratio. Accepted: a number from 0.25 to 4."},
      {"ratio", "1e999", "“1e999” is not accepted for ratio. Accepted: a number from 0.25 to 4."},
      {"isExact", "yes", "“yes” is not accepted for isExact. Accepted: true, false."},
  };
  for (const Row& row : rows) EXPECT_EQ(refusal(row.key, row.value), row.sentence);
}

TEST(Panel, SetsMembersAndGivesThemAsValues) {
  Settings settings;
  const Panel panel = Settings::panel();
  for (const auto& [key, value] : std::vector<std::pair<std::string, std::string>>{
           {"mode", "ranges"}, {"pages", "500"}, {"ratio", "2.75"}, {"isExact", "true"}, {"title", "“a=b”"}}) {
    panel.set(settings, key, value);
  }
  EXPECT_EQ(settings.pages, 500);
  EXPECT_EQ(platform::JsonValue(panel.values(settings)).text(),
            R"({"mode":"ranges","pages":500,"ratio":2.75,"isExact":true,"title":"“a=b”"})");
  EXPECT_EQ(panel.notes(), std::vector<std::string>{"A note."});
  const Control exact = panel.controls().at(3);
  EXPECT_TRUE(exact.isShown(settings));
  EXPECT_FALSE(exact.isShown(Settings()));
}

TEST(Panel, OfAnOperationWithoutSettingsSaysThatThereAreNone) {
  OperationConfig none;
  try {
    Panel().set(none, "algorithm", "md5");
    ADD_FAILURE() << "a setting went nowhere";
  } catch (const SettingError& error) {
    EXPECT_STREQ(error.what(), "There is no setting “algorithm”: the operation has none.");
  }
}

}  // namespace
}  // namespace quirn::tests
