// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "shell/window_start.h"

#include <algorithm>
#include <cstdlib>

#include "core/input_file.h"
#include "core/url.h"

namespace quirn {
namespace {

std::string variable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? "" : value;
}

bool isLink(const std::string& location) {
  const auto url = parseUrl(location);
  return url && (url->scheme == "quirn" || url->scheme == "file");
}

std::string firstOf(std::initializer_list<const char*> names) {
  for (const char* const name : names) {
    if (auto value = variable(name); !value.empty()) return value;
  }
  return "";
}

}  // namespace

std::string WindowRequest::encoded() const {
  std::string text = activationToken + '\0' + operationID;
  for (const std::string& location : locations) text += '\0' + location;
  return text;
}

WindowRequest WindowRequest::decoded(std::string_view text) {
  std::vector<std::string> fields{""};
  for (const char character : text) {
    if (character == '\0') {
      fields.emplace_back();
    } else {
      fields.back() += character;
    }
  }
  fields.resize(std::max<std::size_t>(fields.size(), 2));
  return {.activationToken = fields[0], .operationID = fields[1], .locations = {fields.begin() + 2, fields.end()}};
}

WindowRequest windowRequest(std::span<const std::string> locations, std::string operationID) {
  WindowRequest request;
  request.activationToken = firstOf({"XDG_ACTIVATION_TOKEN", "DESKTOP_STARTUP_ID"});
  request.operationID = std::move(operationID);
  for (const std::string& location : locations)
    request.locations.push_back(isLink(location) ? location : located(location).string());
  return request;
}

std::string windowInstanceName() {
  std::string name = "quirn-" + firstOf({"WAYLAND_DISPLAY", "DISPLAY"});
  std::ranges::replace(name, '/', '_');
  return name;
}

bool hasDisplay() {
  return !firstOf({"WAYLAND_DISPLAY", "DISPLAY", "QT_QPA_PLATFORM"}).empty();
}

}  // namespace quirn
