// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "desktop/desktop_entry.h"

#include <fmt/format.h>

#include "core/shortcuts.h"
#include "desktop/file_types.h"
#include "shell/desktop_actions.h"

namespace quirn::desktop {

std::string entryValue(std::string_view text) {
  std::string value;
  for (const char character : text) {
    if (character == '\\')
      value += "\\\\";
    else
      value += static_cast<unsigned char>(character) < ' ' ? ' ' : character;
  }
  return value;
}

GeneratedFile desktopEntry(const OperationRegistry& registry) {
  std::vector<std::string> types = typesOfAny(registry);
  types.emplace_back("x-scheme-handler/quirn");
  std::vector<std::string> actions;
  std::string groups;
  for (const Shortcut& shortcut : QuirnShortcuts::all()) {
    const std::string name = actionName(shortcut.title);
    actions.push_back(name);
    const std::string operation = shortcut.operationID ? fmt::format(" --operation {}", *shortcut.operationID) : "";
    groups +=
        fmt::format("\n[Desktop Action {}]\nName={}\nExec=quirn open{}\n", name, entryValue(shortcut.title), operation);
  }
  std::string text = fmt::format(
      "[Desktop Entry]\nType=Application\nVersion=1.4\nName=Quirn\nGenericName=File Toolbox\n"
      "Comment=Work on PDFs, images, audio, video, archives and text, on this computer alone\n"
      "Exec=quirn open %U\nIcon={0}\nTerminal=false\nDBusActivatable=true\nStartupNotify=true\n"
      "StartupWMClass={0}\nCategories=Utility;FileTools;Qt;\n"
      "Keywords=convert;merge;split;compress;pdf;image;checksum;json;\nMimeType={1};\nActions={2};\n{3}",
      applicationID, fmt::join(types, ";"), fmt::join(actions, ";"), groups);
  return {.path = fmt::format("applications/{}.desktop", applicationID), .text = std::move(text)};
}

GeneratedFile busService(const std::string& program) {
  return {.path = fmt::format("dbus-1/services/{}.service", applicationID),
          .text = fmt::format("[D-BUS Service]\nName={}\nExec={} open\n", applicationID, program)};
}

}  // namespace quirn::desktop
