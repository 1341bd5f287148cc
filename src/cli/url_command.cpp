// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/url_command.h"

#include <fmt/format.h>

#include <variant>

#include "cli/catalog_commands.h"
#include "cli/console.h"
#include "cli/exit_status.h"
#include "cli/run_command.h"
#include "core/router.h"
#include "core/url.h"

namespace quirn::cli {
namespace {

using Paths = std::vector<std::filesystem::path>;

// What the router made of the link.
using Request = std::variant<std::monostate, QuirnRunRequest, Paths>;

Request routed(const OperationRegistry& registry, const std::string& url) {
  Request request;
  EventBus events;
  platform::PlainMainQueue queue;
  const Subscription running = events.subscribe(notifications::runOpOnURLs,
                                                std::function([&](const QuirnRunRequest& asked) { request = asked; }));
  const Subscription opening =
      events.subscribe(notifications::openURLs, std::function([&](const Paths& paths) { request = paths; }));
  QuirnRouter(registry, events, queue).handleURL(url);
  return request;
}

}  // namespace

int urlCommand(const OperationRegistry& registry, const UrlArguments& arguments) {
  const auto url = parseUrl(arguments.url);
  if (!url || url->scheme != "quirn") {
    throw UsageError(
        fmt::format("“{}” is no link to Quirn. Accepted: quirn://run?op=OPERATION&path=FILE, "
                    "quirn://open?path=FILE.",
                    arguments.url));
  }
  const Request request = routed(registry, arguments.url);
  if (const auto* run = std::get_if<QuirnRunRequest>(&request)) {
    return runCommand(
        registry,
        {.operation = run->opID, .files = run->urls, .out = arguments.out, .settings = {}, .json = arguments.json});
  }
  if (const auto* paths = std::get_if<Paths>(&request))
    return suggestCommand(registry, {.files = *paths, .json = arguments.json});
  say("Nothing to open.", Tone::bad);
  return static_cast<int>(ExitStatus::failed);
}

}  // namespace quirn::cli
