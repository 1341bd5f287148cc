// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "workbench/tool_output.h"

#include <memory>
#include <span>
#include <system_error>

#include "core/output_name.h"
#include "platform/staged_file.h"

namespace quirn {
namespace {

namespace fs = std::filesystem;

fs::path published(platform::StagedFile& file, const fs::path& folder, const std::string& stem,
                   const std::string& extension) {
  for (;;) {
    fs::path url = uniqueFileURL(folder, stem, extension);
    if (file.publishAs(url.filename().string())) return url;
  }
}

}  // namespace

OutputFile saveToolOutput(const TextTool& tool, const std::optional<fs::path>& seed, const fs::path& folder,
                          std::string_view text) {
  try {
    const auto opened = std::make_shared<const platform::OutputFolder>(fs::absolute(folder));
    opened->sweepLeftovers();
    auto file = platform::StagedFile::create(opened);
    platform::writeAll(file.descriptor(), std::as_bytes(std::span(text)));
    if (const std::error_code error = file.flush()) throw std::system_error(error);
    const std::string stem = seed ? seed->stem().string() : tool.shortName;
    fs::path url = published(file, opened->path(), stem, tool.outputExtension);
    opened->flush();
    return {platform::Uuid::random(), std::move(url), OutputRole::primary};
  } catch (const std::system_error&) {
    throw TextToolError("Couldn’t save the file.");
  }
}

}  // namespace quirn
