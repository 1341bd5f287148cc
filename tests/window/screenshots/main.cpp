// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Writes pictures of the window's main states, in light and dark, into a folder: to be looked at, and
// for the documentation.

#include <QApplication>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <filesystem>
#include <string>

#include "window/window_under_test.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

class Photographer {
 public:
  Photographer(fs::path folder, std::string scheme, QSize size)
      : folder_(std::move(folder)), scheme_(std::move(scheme)) {
    qputenv("HOME", QByteArray::fromStdString(subject_.folder.path().string()));  // so that folders begin with "~"
    subject_.window().resize(size);
    const std::string filler(4'200'000, 'x');
    for (const auto& [name, bytes] : {std::pair("Contract 2026.pdf", 1'240'000), std::pair("Appendix A.pdf", 380'000),
                                      std::pair("Appendix B.pdf", 2'410'000)}) {
      files_.push_back(
          subject_.folder.file(fs::path("Documents") / name, filler.substr(0, static_cast<std::size_t>(bytes))));
    }
  }

  void takeAll() {
    take("empty");
    subject_.dropAndWait(files_);
    subject_.application->banners().post(BannerStyle::success, "Created Contract 2026 (merged).pdf");
    take("files");
    subject_.application->banners().dismiss(subject_.application->banners().banners().front().id);
    subject_.choose("operations", "Hash Files");
    take("options");
    subject_.click("run");
    subject_.wait([&] { return !subject_.session().isActive(); });
    take("results");
    for (const auto& banner : std::vector(subject_.application->banners().banners()))
      subject_.application->banners().dismiss(banner.id);
    subject_.session().attemptRun(subject_.type("fake.slow"), subject_.session().inputs());
    subject_.turn();
    take("running");
    subject_.proceed.release();
    subject_.wait([&] { return !subject_.session().isActive(); });
    subject_.application->events().post(notifications::openPalette);
    subject_.window().findChild<QLineEdit*>("paletteField")->setText("merge");
    take("search");
    subject_.press(subject_.find("paletteField"), Qt::Key_Escape);
    workbench("dev.case", "workbench");
    workbench("dev.password", "generator");
  }

 private:
  void workbench(const char* id, const std::string& name) {
    subject_.session().attemptRun(subject_.type(id), {});
    subject_.turn();
    for (auto* each : subject_.window().findChildren<QPushButton*>()) {
      if (each->text() == "Sample" && each->isVisible()) each->click();
    }
    take(name);
    subject_.session().cancelEditing();
  }

  void take(const std::string& name) {
    for (int i = 0; i < 20; ++i) subject_.turn();
    subject_.window().grab().save(window::toQt((folder_ / (name + "-" + scheme_ + ".png")).string()));
  }

  fs::path folder_;
  std::string scheme_;
  WindowUnderTest subject_;
  std::vector<fs::path> files_;
};

}  // namespace
}  // namespace quirn::tests

// FOLDER [WIDTH HEIGHT]
int main(int argc, char** argv) {
  if (const auto status = quirn::tests::workerStatus(argc, argv)) return *status;
  qputenv("QT_QPA_PLATFORM", "offscreen");
  QApplication application(argc, argv);
  const std::filesystem::path folder = argc > 1 ? argv[1] : ".";
  const QSize size = argc > 3 ? QSize(std::atoi(argv[2]), std::atoi(argv[3])) : QSize(1080, 720);
  std::filesystem::create_directories(folder);
  quirn::window::Look look;
  look.apply({.scheme = quirn::window::Scheme::light, .motion = quirn::window::Motion::reduced});
  quirn::tests::Photographer(folder, "light", size).takeAll();
  look.apply({.scheme = quirn::window::Scheme::dark, .motion = quirn::window::Motion::reduced});
  quirn::tests::Photographer(folder, "dark", size).takeAll();
}
