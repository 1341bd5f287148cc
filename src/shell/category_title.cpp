// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shell/category_title.h"

namespace quirn {

std::string_view categoryTitle(OperationCategory category) {
  using enum OperationCategory;
  switch (category) {
    case pdf: return "PDF";
    case image: return "Images";
    case capture: return "Capture";
    case audio: return "Audio";
    case video: return "Video";
    case archive: return "Archives";
    case text: return "Text";
    case office: return "Office";
    case dev: return "Developer";
    case color: return "Color";
    case time: return "Time";
    case contacts: return "Contacts and calendars";
    case subtitles: return "Subtitles";
    case geo: return "Routes and places";
    case vector: return "Vector graphics";
    case utility: return "Utilities";
    case ai: return "Intelligence";
  }
  return "";
}

}  // namespace quirn
