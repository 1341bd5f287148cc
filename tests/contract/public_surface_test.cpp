// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// What people and scripts can see and write: a change of any of it shows as a difference of one
// file. `./dev golden` writes that file anew.

#include <cstdlib>
#include <fstream>

#include "cli/command_line.h"
#include "cli/description.h"
#include "support/process.h"
#include "support/runs.h"
#include "support/temporary_folder.h"

namespace quirn::tests {
namespace {

namespace fs = std::filesystem;

std::string helpText(const std::vector<std::string>& words) {
  const std::string text = std::get<cli::Printout>(cli::parseCommandLine(words)).text;
  return fmt::format("$ quirn {}\n{}\n", fmt::join(words, " "), text);
}

// The object with a line for each key and each control.
std::string described(const OperationType& type) {
  std::string text = cli::descriptionAsText(type);
  for (const auto& [key, value] : cli::descriptionAsJson(type)) {
    std::string line = value.text();
    for (std::size_t at = 0; (at = line.find("},{\"key\"", at)) != std::string::npos;) line.replace(at, 3, "},\n    {");
    text += fmt::format("  {}: {}\n", key, line);
  }
  return text + "\n";
}

std::string publicSurface() {
  std::string text = helpText({"--help"});
  for (const char* command : {"run", "list", "describe", "suggest", "help"}) text += helpText({"help", command});
  for (const OperationType& type : catalog().operations()) text += described(type);
  return text;
}

TEST(PublicSurface, IsTheGoldenOne) {
  const fs::path golden = sourceFolder() / "tests/golden/public_surface.txt";
  if (std::getenv("QUIRN_UPDATE_GOLDEN") != nullptr) std::ofstream(golden) << publicSurface();
  EXPECT_EQ(publicSurface(), contentOf(golden)) << "if this is meant, run ./dev golden and commit the difference";
}

}  // namespace
}  // namespace quirn::tests
