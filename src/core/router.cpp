// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "core/router.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>

#include "core/url.h"

namespace quirn {
namespace fs = std::filesystem;
namespace {

std::vector<fs::path> pathsOf(const Url& url) {
  std::vector<fs::path> paths;
  for (const auto& [name, value] : url.query) {
    if (name != "path" || !value) continue;
    if (const auto path = filePath(*value)) paths.push_back(located(*path));
  }
  return paths;
}

std::optional<std::string> operationOf(const Url& url) {
  for (const auto& [name, value] : url.query) {
    if (name == "op" && value && !value->empty()) return value;
  }
  return std::nullopt;
}

std::optional<fs::path> fileOf(const std::string& location) {
  const auto url = parseUrl(location);
  if (!url) return filePath(location);
  return url->scheme == "file" ? filePath(url->path) : std::nullopt;
}

bool isQuirnURL(std::string_view location) {
  const auto url = parseUrl(location);
  return url && url->scheme == "quirn";
}

[[noreturn]] void refuse(std::string reason) {
  throw OperationError::unsupportedInput(std::move(reason));
}

const OperationType& runnableWithoutEditor(const OperationRegistry& registry, const std::string& operationID) {
  const OperationType* const type = registry.byID(operationID);
  if (type == nullptr) refuse(fmt::format("Quirn doesn’t have an operation called “{}.”", operationID));
  const std::string_view name = type->info().displayName;
  if (type->isInteractive()) refuse(fmt::format("{} needs the editor — open it in the app instead.", name));
  if (!type->isBuilt()) refuse(fmt::format("{} isn’t built yet.", name));
  return *type;
}

// Tells what was left out together with how the rest went.
OperationRunner::Completion reporting(std::vector<FileFailure> unreadable, OperationRunner::Completion completion) {
  if (unreadable.empty()) return completion;
  return [unreadable = std::move(unreadable), completion = std::move(completion)](const RunOutcome& outcome) {
    const auto* const result = outcome.resultIfAny();
    completion(result ? RunOutcome(withUnreadable(*result, unreadable)) : outcome);
  };
}

}  // namespace

void QuirnRouter::handle(std::span<const std::string> locations) const {
  std::vector<fs::path> files;
  for (const std::string& location : locations) {
    if (isQuirnURL(location)) {
      handleURL(location);
    } else if (const auto file = fileOf(location)) {
      files.push_back(located(*file));
    }
  }
  if (!files.empty()) events_.post(notifications::openURLs, files);
}

bool QuirnRouter::handleURL(std::string_view url) const {
  const auto parsed = parseUrl(url);
  if (!parsed || parsed->scheme != "quirn") return false;
  const std::vector<fs::path> paths = pathsOf(*parsed);
  const auto operation = parsed->host == "run" ? operationOf(*parsed) : std::nullopt;
  if (operation) {
    events_.post(notifications::runOpOnURLs, QuirnRunRequest{*operation, paths});
    return true;
  }
  if (!paths.empty()) events_.post(notifications::openURLs, paths);
  return !paths.empty();
}

Run QuirnRouter::run(const QuirnRunRequest& request, std::optional<fs::path> outputDirectory,
                     OperationRunner::Completion completion) const {
  const OperationType& type = runnableWithoutEditor(registry_, request.opID);
  Intake intake = takeIn(request.urls);
  if (intake.files.empty()) refuse("None of those files could be read.");
  if (!type.canRun(intake.files)) refuse(fmt::format("{} can’t run on these files.", type.info().displayName));
  return OperationRunner(queue_).run(type, std::move(intake.files), std::move(outputDirectory),
                                     reporting(std::move(intake.unreadable), std::move(completion)));
}

void QuirnServiceProvider::open(std::span<const fs::path> files) const {
  if (files.empty()) return;
  events_.post(notifications::openURLs, std::vector<fs::path>(files.begin(), files.end()));
}

}  // namespace quirn
