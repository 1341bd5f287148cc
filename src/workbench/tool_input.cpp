// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/tool_input.h"

#include <system_error>

#include "core/input_handle.h"
#include "core/operation_error.h"
#include "platform/readable_file.h"
#include "platform/text.h"

namespace quirn {

std::string toolInput(const TextTool& tool, std::string bytes) {
  if (tool.takesBytes) return bytes;
  if (platform::hasUtf16Mark(bytes)) return platform::utf8FromUtf16(bytes);
  return platform::isUtf8(bytes) ? bytes : platform::repairedUtf8(bytes);
}

std::string toolInputOf(const TextTool& tool, const std::filesystem::path& file) {
  try {
    InputHandle handle(platform::ReadableFile::open(file), file);
    return toolInput(tool, handle.readAll(mostInputBytes));
  } catch (const std::system_error& error) {
    throw OperationError::readFailed(file, error.what());
  }
}

}  // namespace quirn
