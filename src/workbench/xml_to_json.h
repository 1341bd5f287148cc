// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// XML as JSON: attributes become "@name", text "#text", children of one name an array. The order of
// differing children among each other and of text between them is lost.

#pragma once

#include <string>
#include <string_view>

#include "platform/json.h"

namespace quirn {

// The one-key object {root name: content}. Throws XmlError.
platform::JsonValue jsonFromXml(std::string_view text);

// The document as text on one line. Throws TextToolError for what XML can't hold.
std::string xmlFromJson(const platform::JsonValue& value);

}  // namespace quirn
