// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "desktop/service_menus.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>

#include "desktop/desktop_entry.h"
#include "desktop/file_types.h"

namespace quirn::desktop {
namespace {

// In an XML text.
std::string escaped(std::string_view text) {
  std::string value;
  for (const char character : text) {
    switch (character) {
      case '&': value += "&amp;"; break;
      case '<': value += "&lt;"; break;
      case '>': value += "&gt;"; break;
      default: value += character;
    }
  }
  return value;
}

std::string fileName(std::string_view operationID) {
  std::string name = "quirn-" + std::string(operationID);
  std::ranges::replace(name, '.', '-');
  return name;
}

std::string dolphinMenu(std::string_view name, std::string_view types, std::string_view command, bool isBelow) {
  return fmt::format(
      "[Desktop Entry]\nType=Service\nMimeType={};\nActions=quirn;\n{}\n[Desktop Action quirn]\nName={}\nIcon={}\n"
      "Exec={} %F\n",
      types, isBelow ? "X-KDE-Submenu=Quirn\nX-KDE-Submenu[en]=Quirn\n" : "X-KDE-Priority=TopLevel\n", entryValue(name),
      applicationID, command);
}

std::string nemoAction(std::string_view name, std::string_view comment, std::string_view types,
                       std::string_view command) {
  return fmt::format(
      "[Nemo Action]\nName={}\nComment={}\nExec={} %F\nIcon-Name={}\nSelection=notnone\nMimetypes={};\n"
      "Quote=double\nDependencies=quirn;\n",
      entryValue(name), entryValue(comment), command, applicationID, types);
}

std::string thunarSendTo() {
  return fmt::format(
      "[Desktop Entry]\nType=Application\nVersion=1.4\nName=Quirn\nIcon={}\nTryExec=quirn\nExec=quirn open %F\n"
      "MimeType=application/octet-stream;\n",
      applicationID);
}

// Thunar tells types apart by these few families and by patterns of names.
std::string thunarAction(std::string_view name, std::string_view command) {
  return fmt::format(
      "<action>\n\t<icon>{}</icon>\n\t<name>{}</name>\n\t<command>{} %F</command>\n\t<patterns>*</patterns>\n"
      "\t<directories/>\n\t<audio-files/>\n\t<image-files/>\n\t<other-files/>\n\t<text-files/>\n\t<video-files/>\n"
      "</action>\n",
      applicationID, escaped(name), escaped(command));
}

constexpr std::string_view nautilusScript =
    "#!/bin/sh\n"
    "# Opens the selected files in Quirn. Nautilus shows it under Scripts, from a link in\n"
    "# ~/.local/share/nautilus/scripts\n"
    "exec quirn open -- \"$@\"\n";

}  // namespace

std::vector<GeneratedFile> serviceMenus(const OperationRegistry& registry) {
  const std::string openName = "Open in Quirn";
  const std::string open = "quirn open";
  std::vector<GeneratedFile> files{
      {"kio/servicemenus/quirn-open.desktop", dolphinMenu(openName, "all/all", open, false)},
      {"nemo/actions/quirn-open.nemo_action",
       "[Nemo Action]\nName=" + openName + "\nComment=Work on these files in Quirn\nExec=quirn open %F\nIcon-Name=" +
           applicationID + "\nSelection=notnone\nExtensions=any;\nQuote=double\nDependencies=quirn;\n"},
      {"Thunar/sendto/quirn.desktop", thunarSendTo()},
      {"quirn/file-managers/thunar/uca.xml",
       "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<actions>\n" + thunarAction(openName, open) + "</actions>\n"},
      {"quirn/file-managers/nautilus/" + openName, std::string(nautilusScript), GeneratedFile::Kind::script},
  };
  for (const OperationType* const type : menuOperations(registry)) {
    const OperationInfo& info = type->info();
    const std::string types = fmt::format("{}", fmt::join(typesOf(*type), ";"));
    const std::string command = fmt::format("quirn open --operation {}", info.operationID);
    files.push_back({fmt::format("kio/servicemenus/{}.desktop", fileName(info.operationID)),
                     dolphinMenu(info.displayName, types, command, true)});
    files.push_back({fmt::format("nemo/actions/{}.nemo_action", fileName(info.operationID)),
                     nemoAction(info.displayName, info.about, types, command)});
  }
  return files;
}

}  // namespace quirn::desktop
