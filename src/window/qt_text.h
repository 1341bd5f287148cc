// SPDX-FileCopyrightText: Quirn contributors
// SPDX-License-Identifier: GPL-3.0-or-later

// Text and file names between the standard library and Qt.

#pragma once

#include <QString>
#include <QUrl>
#include <filesystem>
#include <string>
#include <string_view>

namespace quirn::window {

QString toQt(std::string_view utf8);
std::string fromQt(const QString& text);

// A text of other origin, such as a file's name, as people may see it, whatever bytes it has.
QString shownName(std::string_view name);
// A folder, with "~" for the person's own.
QString shownFolder(const std::filesystem::path& folder);

// Locations keep the exact bytes of names, which need not be text.
QUrl urlOf(const std::filesystem::path& path);
// Empty for what is no file of this machine.
std::filesystem::path pathOf(const QUrl& url);

}  // namespace quirn::window
