// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/router.h"

#include <gtest/gtest.h>

#include "core/shortcuts.h"
#include "core/url.h"
#include "shell/workspace.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

// What the router posted, as text: "run pdf.merge /a /b", "open /a", one line each.
class Routed {
 public:
  std::string of(std::string_view url) {
    log_.clear();
    router_.handleURL(url);
    return log_;
  }
  std::string of(const std::vector<std::string>& locations) {
    log_.clear();
    router_.handle(locations);
    return log_;
  }

 private:
  void add(std::string line, const std::vector<fs::path>& paths) {
    for (const fs::path& path : paths) line += " " + path.string();
    log_ += (log_.empty() ? "" : "\n") + line;
  }

  std::string log_;
  EventBus events_;
  Subscription opening_ = events_.subscribe(
      notifications::openURLs, std::function([this](const std::vector<fs::path>& urls) { add("open", urls); }));
  Subscription running_ = events_.subscribe(
      notifications::runOpOnURLs,
      std::function([this](const QuirnRunRequest& request) { add("run " + request.opID, request.urls); }));
  OperationRegistry registry_;
  platform::PlainMainQueue queue_;
  QuirnRouter router_{registry_, events_, queue_};
};

TEST(Router, MakesOfAURLWhatItSays) {
  const std::string here = fs::current_path().string();
  const std::pair<std::string, std::string> rows[] = {
      {"quirn://run?op=pdf.merge&path=/a.pdf&path=/b.pdf", "run pdf.merge /a.pdf /b.pdf"},
      {"QUIRN://RUN?op=pdf.merge&path=/a.pdf", "run pdf.merge /a.pdf"},
      {"quirn://run/?op=PDF.Merge&path=/a.pdf", "run PDF.Merge /a.pdf"},  // identifiers are as they are
      {"quirn://run?path=/a&op=dev.uuid", "run dev.uuid /a"},
      {"quirn://run?op=dev.uuid", "run dev.uuid"},
      {"quirn://run?path=/a.pdf", "open /a.pdf"},
      {"quirn://run?op&path=/a.pdf", "open /a.pdf"},
      {"quirn://run?op=&path=/a.pdf", "open /a.pdf"},
      {"quirn://open?path=/a.pdf&op=pdf.merge", "open /a.pdf"},
      {"quirn://elsewhere?path=/a", "open /a"},
      {"quirn:?path=/a", "open /a"},
      {"quirn:///run?op=x&path=/a", "open /a"},
      {"quirn://user@run:80?op=x", "run x"},
      {"quirn://open?path=/with%20blank%25%26%23%2B+%C3%A9.txt", "open /with blank%&#++é.txt"},
      {"quirn://open?path=/caf\u00e9", "open /café"},
      {"quirn://open?path=/100%&path=/%zz", "open /100% /%zz"},
      {"quirn://open?p%61th=/a", "open /a"},
      {"quirn://open?path=/a#path=/b", "open /a"},
      {"quirn://open?path=/a=b", "open /a=b"},
      {"quirn://open?path=/tmp/../a&path=/./b/", "open /a /b"},
      {"quirn://open?path=near.txt", "open " + here + "/near.txt"},
      {"quirn://open?path=/a%00.pdf", ""},  // would be another file than it shows
      {"quirn://open?path=&path&Path=/a&other=/b", ""},
      {"quirn://open", ""},
      {"quirn:", ""},
      {"", ""},
      {"https://run?op=pdf.merge&path=/a", ""},
      {"://run?path=/a", ""},
  };
  Routed routed;
  for (const auto& [url, posted] : rows) EXPECT_EQ(routed.of(url), posted) << url;
}

TEST(Router, TakesAThousandPaths) {
  std::string url = "quirn://run?op=pdf.merge";
  std::string posted = "run pdf.merge";
  for (int i = 0; i < 1000; ++i) {
    url += fmt::format("&path=/{}.pdf", i);
    posted += fmt::format(" /{}.pdf", i);
  }
  EXPECT_EQ(Routed().of(url), posted);
}

TEST(Router, GathersTheFilesThatTheDesktopOpens) {
  Routed routed;
  EXPECT_EQ(
      routed.of({"file:///a%20b.pdf", "quirn://open?path=/q", "/c.pdf", "https://example.org/d", "FILE://localhost/e"}),
      "open /q\nopen /a b.pdf /c.pdf /e");
  EXPECT_EQ(routed.of(std::vector<std::string>{"https://example.org/"}), "");
}

struct RefusalRow {
  const char* operation;
  bool withFile;
  const char* message;
};

TEST(Router, RefusesARequestBeforeAnythingStarts) {
  const std::string prefix = "Quirn can't run this on these files. ";
  const RefusalRow rows[] = {
      {"fake.nothing", true, "Quirn doesn’t have an operation called “fake.nothing.”"},
      {"", false, "Quirn doesn’t have an operation called “.”"},
      {"fake.editor", false, "Editor needs the editor — open it in the app instead."},
      {"fake.unbuilt", true, "Unbuilt isn’t built yet."},
      {"fake.text", false, "None of those files could be read."},
      {"fake.text", true, "Text Only can’t run on these files."},
  };
  Workspace workspace;
  const QuirnRouter router(workspace.registry, workspace.events, workspace.queue);
  const fs::path photo = workspace.folder.file("photo.jpg", "x");
  for (const RefusalRow& row : rows) {
    const QuirnRunRequest request{row.operation, {row.withFile ? photo : fs::path("/gone/a.txt")}};
    try {
      const auto run = router.run(request, std::nullopt, [](const RunOutcome&) { FAIL() << "it ran"; });
      FAIL() << row.message;
    } catch (const OperationError& error) {
      EXPECT_EQ(error.userMessage(), prefix + row.message);
    }
  }
}

TEST(Router, RunsOnWhatCanBeReadAndTellsOfTheRest) {
  Workspace workspace;
  const QuirnRouter router(workspace.registry, workspace.events, workspace.queue);
  std::optional<RunOutcome> ended;
  const auto run = router.run({"fake.text", {workspace.folder.file("a.txt", "x"), "/gone/b.txt"}}, std::nullopt,
                              [&](const RunOutcome& outcome) { ended = outcome; });
  workspace.wait([&] { return ended.has_value(); });
  EXPECT_EQ(workspace.ranOn, std::vector<std::string>{"a.txt"});
  ASSERT_EQ(ended->result().failures.size(), 1U);
  EXPECT_EQ(ended->result().failures.front().fileName, "b.txt");
}

TEST(ServiceProvider, HandsItsFilesToTheWindow) {
  Workspace workspace;
  QuirnServiceProvider(workspace.events).open(std::vector{workspace.folder.file("a.txt", "x")});
  workspace.wait([&] { return workspace.session->inputs().size() == 1; });
}

}  // namespace
}  // namespace quirn::tests
